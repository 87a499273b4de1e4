#pragma once

// The combo boxes of dialogs.

#include <QComboBox>

namespace ostrova::uikit {

/// A box that opens a list as wide as its texts. The wheel turns it only when it has the focus:
/// rolling over a page must not choose anything.
class DropDown final : public QComboBox {
    Q_OBJECT

public:
    explicit DropDown(QWidget* parent = nullptr);

    /// To be called once a template has laid the box out: the height is that of the box with the
    /// list open. The box becomes as high as it is closed; the list scrolls when it holds more.
    void TakeTemplateHeight();

    /// Room for as many characters as `minimumContentsLength` says.
    [[nodiscard]] QSize sizeHint() const override;
    void showPopup() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace ostrova::uikit
