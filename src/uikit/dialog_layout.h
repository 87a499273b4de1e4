#pragma once

// How the controls of a dialog follow its size.

#include <QDialog>
#include <QPointer>
#include <QRect>
#include <QSize>
#include <cstdint>
#include <vector>

namespace ostrova::uikit {

/// Bits of an anchor, the same for both axes: the near edge is left or top, the far edge right or
/// bottom. An edge that no bit ties to anything scales with the dialog.
enum AnchorBits : std::uint32_t {
    AnchorKeepSize = 1,
    AnchorNear = 2,  // the near edge stays where it was
    AnchorFar = 4,   // the far edge keeps its distance from the dialog's far edge

    AnchorFixed = AnchorKeepSize | AnchorNear,
    AnchorStretch = AnchorNear | AnchorFar,
    AnchorMove = AnchorKeepSize | AnchorFar,
};

/// Lays out the controls of one dialog. What a control was when it was attached counts for ever,
/// so that no rounding adds up. Controls made later are not laid out.
class DialogLayout {
public:
    /// In pixels, each at least 1.
    void SetMinTrackSize(int width, int height);

    /// Remembers the controls of `dialog`, anchors 0, in place of all remembered before. The size
    /// that the dialog has now is the least, unless another was set.
    void Attach(QWidget& dialog);

    /// False when the control was not attached.
    bool SetAnchor(const QWidget* control, std::uint32_t horizontal, std::uint32_t vertical);
    bool SetAnchorById(int id, std::uint32_t horizontal, std::uint32_t vertical);

    /// Moves all controls to where they belong at the dialog's present size.
    void Relayout();

    [[nodiscard]] QSize MinTrackSize() const { return minTrackSize_; }

    /// Gives the dialog its least and its largest size.
    void FillMinMaxInfo();

private:
    struct LayoutEntry {
        QPointer<QWidget> control;
        QRect attachRect;
        std::uint32_t horizontalAnchor = 0;
        std::uint32_t verticalAnchor = 0;
    };

    std::vector<LayoutEntry> entries_;
    QPointer<QWidget> dialog_;
    QSize attachSize_;
    QSize minTrackSize_{0, 0};
    QSize maxTrackSize_{999999, 999999};
};

/// A dialog that can be resized, and whose controls follow.
class ResizableDialog : public QDialog {
    Q_OBJECT

public:
    using QDialog::QDialog;

    /// Attach it once the controls exist, set anchors, then call its `FillMinMaxInfo`.
    [[nodiscard]] DialogLayout& Layout() { return layout_; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    DialogLayout layout_;
};

}  // namespace ostrova::uikit
