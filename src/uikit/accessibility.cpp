#include "uikit/accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "uikit/icon_view.h"
#include "uikit/link_label.h"

namespace ostrova::uikit {
namespace {

class LinkLabelAccessible final : public QAccessibleWidget {
public:
    explicit LinkLabelAccessible(LinkLabel* label)
        : QAccessibleWidget(label, QAccessible::StaticText), label_(label) {}

    [[nodiscard]] QAccessible::Role role() const override {
        return label_->IsLink() ? QAccessible::Link : QAccessible::StaticText;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Name) return label_->text();
        if (kind == QAccessible::Description && label_->IsLink()) return label_->Target();
        return QAccessibleWidget::text(kind);
    }
    [[nodiscard]] QStringList actionNames() const override {
        return label_->IsLink() ? QStringList{pressAction()} : QStringList();
    }
    void doAction(const QString& name) override {
        if (name == pressAction()) label_->Activate();
    }

private:
    LinkLabel* label_;
};

QAccessibleInterface* MakeInterface(const QString& /*className*/, QObject* object) {
    if (auto* label = qobject_cast<LinkLabel*>(object)) return new LinkLabelAccessible(label);
    if (auto* icon = qobject_cast<IconView*>(object)) {
        return new QAccessibleWidget(icon, QAccessible::Graphic);
    }
    return nullptr;
}

}  // namespace

void InstallAccessibility() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(MakeInterface);
        return true;
    }();
    Q_UNUSED(isInstalled);
}

}  // namespace ostrova::uikit
