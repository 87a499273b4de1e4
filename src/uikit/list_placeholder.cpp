#include "uikit/list_placeholder.h"

#include <QLayout>
#include <QWidget>

#include "uikit/dialog_builder.h"
#include "uikit/new_list_ctrl.h"

namespace ostrova::uikit {
namespace {

/// The sibling directly above `control`, or null when it is the topmost.
QWidget* NextSibling(const QWidget& control) {
    const QObjectList& siblings = control.parentWidget()->children();
    for (qsizetype i = siblings.indexOf(&control) + 1; i < siblings.size(); ++i) {
        auto* sibling = qobject_cast<QWidget*>(siblings[i]);
        if (sibling != nullptr && !sibling->isWindow()) return sibling;
    }
    return nullptr;
}

}  // namespace

bool ReplaceListPlaceholder(QWidget& dialog, int id, NewListCtrl* list) {
    QWidget* placeholder = ControlById(dialog, id);
    if (placeholder == nullptr) return false;
    QWidget* above = NextSibling(*placeholder);
    const bool isShown = !placeholder->isHidden();
    list->setParent(placeholder->parentWidget());
    list->setGeometry(placeholder->geometry());
    list->setObjectName(placeholder->objectName());
    list->setAccessibleName(placeholder->accessibleName());
    SetControlId(*list, id);
    list->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    list->SetDrawMode(2);
    if (above != nullptr) list->stackUnder(above);
    placeholder->setFocusPolicy(list->focusPolicy());  // others have no place in the tab order
    QWidget::setTabOrder(placeholder, list);
    if (QLayout* layout = dialog.layout()) delete layout->replaceWidget(placeholder, list);
    delete placeholder;
    list->setVisible(isShown);
    return true;
}

}  // namespace ostrova::uikit
