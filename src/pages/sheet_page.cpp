#include "pages/sheet_page.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QPushButton>
#include <QResizeEvent>

#include "uikit/dialog_builder.h"

namespace ostrova::pages {
namespace {

constexpr int ExitButton = 2;

/// Tells `widget` and all in it the sizes that they would be told when they next show.
void DeliverSizes(QWidget& widget) {
    constexpr int MostTimes = 4;  // what hears of its size may ask for another one
    for (int i = 0; i < MostTimes && widget.testAttribute(Qt::WA_PendingResizeEvent); ++i) {
        widget.setAttribute(Qt::WA_PendingResizeEvent, false);
        QResizeEvent event(widget.size(), QSize());
        QCoreApplication::sendEvent(&widget, &event);
    }
    for (QWidget* child : widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (!child->isWindow()) DeliverSizes(*child);
    }
}

}  // namespace

SheetPage::SheetPage(const QString& title, QWidget* parent) : QWidget(parent), title_(title) {}

void SheetPage::Create() {
    if (isCreated_) return;
    const QSize given = size();
    // Controls that are made while the page is on the screen would stay hidden.
    const bool isShown = isVisible();
    if (isShown) hide();
    Initialise();
    // Enter is for the control that has the focus, never for a button of the page.
    for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
    isCreated_ = true;
    // The controls stand as the template has them; from there they follow the page's own size.
    resize(given);
    if (layout() != nullptr) {
        // What the controls stand on has to have its size before them: when it gets it only as the
        // page shows, a size that changes meanwhile is never told.
        layout()->activate();
        DeliverSizes(*this);
    }
    Relayout();
    if (isShown) show();
}

void SheetPage::FollowSize(const QRect& place) {
    setGeometry(place);
    DeliverSizes(*this);
}

void SheetPage::ConnectExit() {
    auto* exit = uikit::ControlAs<QPushButton>(*this, ExitButton);
    connect(exit, &QPushButton::clicked, this, &SheetPage::exitRequested);
}

void SheetPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (isCreated_) Relayout();
}

void SheetPage::Relayout() {
    layout_.Relayout();
    isArranged_ = isVisible();
    if (isArranged_) AfterRelayout();
}

void SheetPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (isCreated_ && !isArranged_) Relayout();
}

void SheetPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        emit escapePressed();
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace ostrova::pages
