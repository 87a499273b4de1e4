#pragma once

#include <QIcon>
#include <QWidget>

namespace ostrova::uikit {

/// Shows an icon, crisp at any scale, or nothing.
class IconView final : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    void SetIcon(const QIcon& icon);
    [[nodiscard]] const QIcon& Icon() const { return icon_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QIcon icon_;
};

}  // namespace ostrova::uikit
