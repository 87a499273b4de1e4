#pragma once

// The header of a list: titles, the arrow of the sorted column, and columns that can be dragged.

#include <QHeaderView>

namespace ostrova::uikit {

class ListHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit ListHeader(QWidget* parent);

    /// Shows the arrow at the right of the column's title: pointing down for ascending. -1 for
    /// none.
    void ShowSorted(int column, bool ascending);

    /// Lets the user drag a column to another place; off at first.
    void SetDragEnabled(bool isEnabled);

signals:
    /// The user dropped column `from` on column `to`, before which it shall stand.
    void columnDropped(int from, int to);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override;

private:
    enum class Drag { None, Armed, Running };

    [[nodiscard]] bool IsOnDivider(int x) const;
    void NoteWidths();
    [[nodiscard]] int ColumnAt(int x) const;
    void MoveMarker(int column);
    void DropColumn();
    void PaintGround(QPainter& painter, QStyleOptionHeader& option) const;
    [[nodiscard]] QSize ArrowSize() const;
    void PaintArrow(QPainter* painter, const QRect& rect) const;

    int sortColumn_ = -1;
    bool sortAscending_ = true;
    bool dragEnabled_ = false;
    Drag drag_ = Drag::None;
    int draggedColumn_ = -1;
    int insertColumn_ = -1;     ///< where the marker shows; -1 for nowhere
    QList<int> widthsAtStart_;  ///< of all columns when the drag began
};

}  // namespace ostrova::uikit
