#pragma once

// The drop-down list from which the value of a cell is chosen.

#include <QComboBox>
#include <QPersistentModelIndex>
#include <QPoint>
#include <optional>
#include <string>
#include <vector>

namespace ostrova::uikit {

class NewListCtrl;

/// Lives as long as it has the focus: a choice, Enter and any other loss of the focus report the
/// chosen text with the list's endLabelEdit, Escape and the loss of its cell report no text. Then
/// it deletes itself.
class CellChoice : public QComboBox {
    Q_OBJECT

public:
    /// Shown over the cell, dropped down, with the focus. `list` owns it.
    CellChoice(NewListCtrl& list, int row, int column, std::vector<std::string> choices,
               int selectedChoice);

    void showPopup() override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void FollowCell();
    void StandOverCell();
    void FitDropDown();
    [[nodiscard]] bool IsEndOfOpeningPress(QObject* watched, const QEvent& event);
    void LeaveWhenClosed();
    void End();

    NewListCtrl& list_;
    QPersistentModelIndex cell_;  // rows can be put in and sorted while it is open
    int column_;
    std::vector<std::string> choices_;
    std::optional<QPoint> openingPress_;  // global; while its button is down
    bool cancelled_ = false;
    bool ended_ = false;
};

/// Opens the choice of a cell; it deletes itself. Null when the column is narrower than 10 pixels
/// or the cell doesn't exist.
CellChoice* EditCellChoice(NewListCtrl& list, int row, int column, std::vector<std::string> choices,
                           int selectedChoice);

}  // namespace ostrova::uikit
