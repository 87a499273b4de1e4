#include "window/tab_sheet.h"

#include <QPaintEvent>
#include <QStyleOptionTabWidgetFrame>
#include <QStylePainter>
#include <QTabBar>
#include <utility>

namespace ostrova::window {

TabSheet::TabSheet(QWidget* parent) : QTabWidget(parent) {
    setObjectName(QStringLiteral("sheet"));
    setAccessibleName(QStringLiteral("Pages"));
    tabBar()->setObjectName(QStringLiteral("tabs"));
    tabBar()->setAccessibleName(QStringLiteral("Pages"));
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideNone);
    connect(this, &QTabWidget::currentChanged, this, &TabSheet::OnCurrentChanged);
}

void TabSheet::AddPage(pages::SheetPage* page) {
    const bool was = std::exchange(isActivating_, true);
    addTab(page, page->Title());
    isActivating_ = was;
}

pages::SheetPage* TabSheet::PageAt(int index) const {
    return qobject_cast<pages::SheetPage*>(widget(index));
}

/// The frame in short pieces. Styles draw an edge's light with a translucent pen. Qt hands any such
/// line longer than about a hundred pixels to a pool of threads, which takes longer than the
/// drawing.
void TabSheet::paintEvent(QPaintEvent* event) {
    constexpr int PieceLength = 80;  // of the screen's points
    QStylePainter painter(this);
    QStyleOptionTabWidgetFrame option;
    initStyleOption(&option);
    option.rect = style()->subElementRect(QStyle::SE_TabWidgetTabPane, &option, this);
    const auto paintWithin = [&](const QRect& part) {
        if (!event->region().intersects(part)) return;
        painter.setClipRect(part);
        painter.drawPrimitive(QStyle::PE_FrameTabWidget, option);
    };
    const QRect inside = style()->subElementRect(QStyle::SE_TabWidgetTabContents, &option, this);
    paintWithin(inside);
    const int piece = static_cast<int>(PieceLength / devicePixelRatioF());
    for (const QRect& edge : QRegion(rect()) - inside) {
        for (int y = edge.top(); y <= edge.bottom(); y += piece) {
            for (int x = edge.left(); x <= edge.right(); x += piece) {
                paintWithin(QRect(x, y, piece, piece) & edge);
            }
        }
    }
}

void TabSheet::resizeEvent(QResizeEvent* event) {
    QTabWidget::resizeEvent(event);
    if (!isVisible()) PlacePagesEarly();
    SizePages();
}

void TabSheet::PlacePagesEarly() {
    if (currentWidget() == nullptr) return;
    QStyleOptionTabWidgetFrame option;
    initStyleOption(&option);
    currentWidget()->parentWidget()->setGeometry(
        style()->subElementRect(QStyle::SE_TabWidgetTabContents, &option, this));
}

void TabSheet::SizePages() {
    if (currentWidget() == nullptr) return;
    const QRect place(QPoint(0, 0), currentWidget()->parentWidget()->size());
    for (int i = 0; i < count(); ++i) {
        if (PageAt(i)->geometry() != place) PageAt(i)->FollowSize(place);
    }
}

pages::SheetPage* TabSheet::Switch(int index) {
    pages::SheetPage* const left = ActivePage();
    pages::SheetPage* const entered = PageAt(index);
    if (left == entered || entered == nullptr) return nullptr;
    if (left != nullptr) left->OnKillActive();
    active_ = index;
    SizePages();
    entered->Create();
    entered->OnSetActive();
    return left;
}

void TabSheet::ActivatePage(int index) {
    isActivating_ = true;
    setCurrentIndex(index);
    isActivating_ = false;
    Switch(index);
}

void TabSheet::OnCurrentChanged(int index) {
    if (isActivating_) return;
    if (pages::SheetPage* const left = Switch(index)) emit pageChanged(left);
}

}  // namespace ostrova::window
