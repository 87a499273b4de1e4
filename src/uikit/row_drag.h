#pragma once

// Dragging a row to a place in its own or another list.

#include <QBasicTimer>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <optional>

class QLabel;
class QPainter;

namespace ostrova::uikit {

class NewListCtrl;

/// The one drag that can be under way in the program; all lists share it.
class RowDrag : public QObject {
public:
    [[nodiscard]] static RowDrag& Current();
    ~RowDrag() override;

    [[nodiscard]] bool IsFrom(const NewListCtrl& list) const;

    /// `cursor` is in global coordinates here and below.
    void Start(NewListCtrl& source, int row, QPoint cursor);
    void Move(QPoint cursor);
    /// Ends the drag; the source's OnDrop is called when it leads anywhere.
    void Drop();
    void Cancel();

    /// The row before which `list` shows the marker; nothing when the drag is not over it.
    [[nodiscard]] std::optional<int> MarkedRow(const NewListCtrl& list) const;
    /// Draws the marker above `row`, or below the last row when `row` is behind it.
    static void PaintMarker(QPainter& painter, const NewListCtrl& list, int row);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    RowDrag() = default;

    void ShowMarker(NewListCtrl* target, int row);
    void MoveImage();
    void ScrollDown(NewListCtrl& list, int beyond);
    void ScrollUp(NewListCtrl& list, int beyond);
    [[nodiscard]] bool IsScrollTick(int beyond) const;

    QPointer<NewListCtrl> source_;
    QPointer<NewListCtrl> target_;
    QPointer<QLabel> image_;
    int sourceRow_ = -1;
    int dropRow_ = -1;
    int ticks_ = 0;
    QPoint cursor_;
    QBasicTimer timer_;
};

}  // namespace ostrova::uikit
