#pragma once

// The box in which the text of a cell is edited.

#include <QLineEdit>
#include <QPersistentModelIndex>
#include <string>

namespace ostrova::uikit {

class NewListCtrl;

/// Lives as long as it has the focus: Enter and any other loss of the focus report its text with
/// the list's endLabelEdit, Escape and the loss of its cell report no text. Then it deletes itself.
class CellEdit : public QLineEdit {
    Q_OBJECT

public:
    /// Shown over the cell, with the focus and the whole text selected. `list` owns it.
    CellEdit(NewListCtrl& list, int row, int column);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void FollowCell();
    void StandOverCell();
    void GrowToText();
    void End();
    [[nodiscard]] std::string EditedText() const;

    NewListCtrl& list_;
    QPersistentModelIndex cell_;  // rows can be put in and sorted while it is open
    int column_;
    std::string initialText_;
    bool cancelled_ = false;
    bool ended_ = false;
};

/// Opens the editor of a text cell and counts it in the list; the editor deletes itself.
CellEdit* EditCellText(NewListCtrl& list, int row, int column);

}  // namespace ostrova::uikit
