#include "uikit/new_list_ctrl.h"

#include <QAccessible>
#include <QApplication>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <algorithm>
#include <utility>

#include "uikit/list_header.h"
#include "uikit/row_delegate.h"
#include "uikit/row_drag.h"

namespace ostrova::uikit {

NewListCtrl::NewListCtrl(QWidget* parent)
    : QTreeView(parent), header_(new ListHeader(this)), delegate_(new RowDelegate(*this)) {
    setHeader(header_);
    setModel(&model_);
    setItemDelegate(delegate_);
    setLayoutDirection(Qt::LeftToRight);  // of English texts; the drawing knows no other
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setFocusPolicy(Qt::TabFocus);  // a press takes the focus only when its cell is found
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    const int imageSize = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    setIconSize({imageSize, imageSize});
    header_->setSectionsClickable(true);
    header_->setHighlightSections(false);
    header_->setMinimumSectionSize(minColumnWidth_);
    // The platform's own way to fit a column knows neither the neighbours nor all rows.
    disconnect(header_, &QHeaderView::sectionHandleDoubleClicked, this, nullptr);
    connect(header_, &QHeaderView::sectionHandleDoubleClicked, this,
            &NewListCtrl::FitColumnToTexts);
    connect(header_, &QHeaderView::sectionResized, this, &NewListCtrl::OnSectionResized);
    connect(header_, &QHeaderView::sectionClicked, this, &NewListCtrl::OnHeaderClick);
    connect(header_, &ListHeader::columnDropped, this, &NewListCtrl::MoveColumn);
    const auto takeFocus = [this] { setFocus(); };
    // After the view, which has connected itself with the model.
    connect(&model_, &ListModel::layoutChanged, this, &NewListCtrl::cellsMoved);
    connect(&model_, &ListModel::rowsInserted, this, &NewListCtrl::cellsMoved);
    connect(&model_, &ListModel::rowsRemoved, this, &NewListCtrl::cellsMoved);
    connect(&model_, &ListModel::modelReset, this, &NewListCtrl::cellsMoved);
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, takeFocus);
    connect(horizontalScrollBar(), &QScrollBar::actionTriggered, this, takeFocus);
}

NewListCtrl::~NewListCtrl() {
    // Editors would report to a list that is no more.
    qDeleteAll(viewport()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
    setModel(nullptr);  // before the member goes
}

// --- Rows ---

/// Row by row, a long fill would mostly consist of telling the view what it knows.
void NewListCtrl::InsertRow(int row, RowTexts texts) {
    const bool isKnown = layoutPending_ && !QAccessible::isActive();
    if (isKnown && model_.InsertRowUntold(row, texts)) return;
    layoutPending_ = true;
    model_.InsertRow(row, std::move(texts));  // an open editor lays out at once, to follow its row
}

void NewListCtrl::doItemsLayout() {
    layoutPending_ = false;
    QTreeView::doItemsLayout();
}

void NewListCtrl::AppendRows(std::vector<RowTexts> rows) {
    model_.AppendRows(std::move(rows));
}

void NewListCtrl::DeleteRow(int row) {
    model_.RemoveRow(row);
}

void NewListCtrl::DeleteAllRows() {
    model_.RemoveAllRows();
}

int NewListCtrl::GetRowCount() const {
    return model_.rowCount();
}

std::string_view NewListCtrl::CellText(int row, int column) const {
    return model_.Text(row, column);
}

void NewListCtrl::SetCellText(int row, int column, std::string text) {
    model_.SetText(row, column, std::move(text));
}

RowRecord& NewListCtrl::GetRowRecord(int row) {
    return model_.Record(row);
}

void NewListCtrl::UpdateRow(int row) {
    model_.ReportRow(row);
}

void NewListCtrl::SetRowTextColours(int row, Colour normal, Colour selected) {
    RowRecord& record = model_.Record(row);
    record.textColour = normal;
    record.selectedTextColour = selected;
    UpdateRow(row);
}

void NewListCtrl::SetRowBackColours(int row, Colour normal, Colour selected) {
    RowRecord& record = model_.Record(row);
    record.backColour = normal;
    record.selectedBackColour = selected;
    UpdateRow(row);
}

void NewListCtrl::SetRowReadOnly(int row, bool isReadOnly) {
    model_.Record(row).flags = isReadOnly ? ReadOnlyRow : 0;
    UpdateRow(row);
}

void NewListCtrl::SetStateImages(QList<QIcon> images) {
    stateImages_ = std::move(images);
    scheduleDelayedItemsLayout();
}

void NewListCtrl::SetSmallImages(QList<QIcon> images) {
    smallImages_ = std::move(images);
    scheduleDelayedItemsLayout();
}

void NewListCtrl::SetNormalImages(QList<QIcon> images) {
    normalImages_ = std::move(images);
}

// --- Selection ---

int NewListCtrl::SelectedRow() const {
    int first = -1;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        if (first < 0 || range.top() < first) first = range.top();
    }
    return first;
}

bool NewListCtrl::IsRowSelected(int row) const {
    return selectionModel()->isSelected(model_.index(row, 0));
}

void NewListCtrl::SelectRow(int row) {
    const bool addsToOthers = selectionMode() != SingleSelection;
    const int column = std::max(currentIndex().column(), 0);
    const bool scrolls = hasAutoScroll();
    setAutoScroll(false);  // to select is not yet to bring into view
    selectionModel()->setCurrentIndex(
        model_.index(row, column),
        (addsToOthers ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect) |
            QItemSelectionModel::Rows);
    setAutoScroll(scrolls);
}

void NewListCtrl::EnsureVisible(int row) {
    ScrollTo(row, QTreeView::EnsureVisible);
}

int NewListCtrl::TopRow() const {
    return verticalScrollBar()->value();
}

void NewListCtrl::SetTopRow(int row) {
    ScrollTo(row, PositionAtTop);
}

/// Never across: the first column is as good as any other.
void NewListCtrl::ScrollTo(int row, ScrollHint hint) {
    const int across = horizontalScrollBar()->value();
    scrollTo(model_.index(row, 0), hint);
    horizontalScrollBar()->setValue(across);
}

void NewListCtrl::SetSelectionCallback(SelectionCallback callback) {
    selectionCallback_ = std::move(callback);
}

void NewListCtrl::SetScrollCallback(ScrollCallback callback) {
    scrollCallback_ = std::move(callback);
}

void NewListCtrl::SetTogglesSelection(bool isOn) {
    togglesSelection_ = isOn;
}

void NewListCtrl::SetShowSelectionAlways(bool isOn) {
    showSelectionAlways_ = isOn;
    viewport()->update();
}

// --- Drawing ---

int NewListCtrl::SetDrawMode(int mode) {
    if (mode < 0 || mode > 2) return drawMode_;
    const int before = std::exchange(drawMode_, mode);
    if (mode > 0) ownerDrawn_ = true;
    viewport()->update();
    return before;
}

bool NewListCtrl::IsDrawnSelected(int row) const {
    return editCount_ == 0 && (showSelectionAlways_ || hasFocus()) && IsRowSelected(row);
}

QRect NewListCtrl::CellRect(int row, int column) const {
    return visualRect(model_.index(row, column));
}

QRect NewListCtrl::CellIn(const QRect& rowRect, int column) const {
    return {header_->sectionViewportPosition(column), rowRect.top(), header_->sectionSize(column),
            rowRect.height()};
}

QRect NewListCtrl::RowIn(const QRect& rowRect) const {
    return {-header_->offset(), rowRect.top(), header_->length(), rowRect.height()};
}

int NewListCtrl::HitTestCell(QPoint point, int& column) const {
    const int x = point.x() + header_->offset();
    const bool isInside = point.y() >= 0 && point.y() < viewport()->height();
    const QModelIndex onRow = isInside ? indexAt({-header_->offset(), point.y()}) : QModelIndex();
    if (x < 0 || x >= header_->length() || !onRow.isValid()) return -1;
    int right = 0;
    for (int i = 0; i < header_->count(); ++i) {
        right += header_->sectionSize(i);
        if (x <= right) {
            column = i;
            return onRow.row();
        }
    }
    return -1;
}

void NewListCtrl::drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    if (ownerDrawn_) {
        delegate_->PaintRow(*painter, option, index.row());
    } else {
        QTreeView::drawRow(painter, option, index);
    }
}

void NewListCtrl::paintEvent(QPaintEvent* event) {
    QTreeView::paintEvent(event);
    if (const auto row = RowDrag::Current().MarkedRow(*this)) {
        QPainter painter(viewport());
        RowDrag::PaintMarker(painter, *this, *row);
    }
    // The row that has the focus shows it; without one the keyboard's place would be unseen.
    if (hasFocus() && GetRowCount() == 0) {
        QPainter painter(viewport());
        QStyleOptionFocusRect option;
        option.initFrom(viewport());
        option.backgroundColor = palette().color(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void NewListCtrl::scrollContentsBy(int dx, int dy) {
    QTreeView::scrollContentsBy(dx, dy);
    emit scrolled();
    if (dx != 0) viewport()->update();  // what ends at the right edge has moved away from it
    if (dy != 0 && scrollCallback_) scrollCallback_();
}

// --- Editing ---

void NewListCtrl::SetEditQuestion(EditQuestion question) {
    editQuestion_ = std::move(question);
}

void NewListCtrl::SetEditingEnabled(bool isOn) {
    editingEnabled_ = isOn;
}

void NewListCtrl::SetEditLabels(bool isOn) {
    editLabels_ = isOn;
}

void NewListCtrl::EditorOpened() {
    ++editCount_;
    viewport()->update();
}

void NewListCtrl::EditorClosed() {
    --editCount_;
    viewport()->update();
}

std::string NewListCtrl::GetCellText(int row, int column) const {
    return std::string(CellText(row, column));
}

bool NewListCtrl::CanDrag(int) const {
    return false;
}

void NewListCtrl::OnDrop(NewListCtrl&, int, int) {}

}  // namespace ostrova::uikit
