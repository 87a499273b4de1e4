#pragma once

// Draws the rows of a list: a whole row at once, with its highlight, colours and images.

#include <QStyledItemDelegate>

namespace ostrova::uikit {

class NewListCtrl;

class RowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// `list` owns the delegate.
    explicit RowDelegate(NewListCtrl& list);

    /// Draws `row` into the part of `option.rect` (viewport coordinates, as wide as the viewport)
    /// that is its own.
    void PaintRow(QPainter& painter, const QStyleOptionViewItem& option, int row) const;

    /// What the images leave of column 0's `cell` to its text.
    [[nodiscard]] QRect LabelRect(const QRect& cell) const;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    struct Look;

    [[nodiscard]] Look LookOf(const QStyleOptionViewItem& option, int row) const;
    [[nodiscard]] QRect ExtentOf(const QStyleOptionViewItem& option, int row) const;
    [[nodiscard]] QRect TextExtent(const QStyleOptionViewItem& option, int row) const;
    void PaintImages(QPainter& painter, const QRect& cell, int row) const;
    void PaintTexts(QPainter& painter, const QStyleOptionViewItem& option, const Look& look,
                    int row) const;
    void PaintStar(QPainter& painter, const QRect& rowRect, const Look& look, int margin) const;
    void PaintFocus(QPainter& painter, const QRect& rowRect, const Look& look) const;

    NewListCtrl& list_;
};

}  // namespace ostrova::uikit
