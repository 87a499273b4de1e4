#pragma once

// A label that is plain words or one link.

#include <QCursor>
#include <QLabel>
#include <functional>
#include <optional>

#include "uikit/colour.h"
#include "uikit/open_link.h"

namespace ostrova::uikit {

/// A label that is plain words or one link. Its text is shown as it stands, but for "&&", which is
/// one "&"; lines that are too long end in an ellipsis, and a tooltip shows all. A link is opened
/// by a click, or by Enter or Space when Tab has reached it; its target shows in the tooltip.
class LinkLabel final : public QLabel {
    Q_OBJECT

public:
    using ClickFunction = std::function<void(const QString& target)>;

    /// `Text`: the text blinks. `Background`: the label is painted again at each tick.
    enum class BlinkMode { None, Text, Background };

    /// `links` is borrowed and outlives the label.
    explicit LinkLabel(QWidget* parent = nullptr, LinkOpener& links = DesktopLinks());

    /// Changes the text and nothing else.
    void SetText(const QString& text);

    /// Shows `text` as plain words; clicks and keys pass it by. The target stays, unused.
    void SetPlainText(const QString& text);

    /// Shows `text` as a link to `target`, or to the text itself when there is none. A click calls
    /// `onClick` with the target, or opens the target when there is no such function.
    void SetLink(const QString& text, const std::optional<QString>& target = std::nullopt,
                 ClickFunction onClick = {});

    void SetTextColour(Colour colour);  // `NoColour`: the palette's
    void SetBold(bool bold);
    void SetUnderline(bool underline);
    void SetNotify(bool notify);  // whether clicks are taken
    void SetCursor(const QCursor& cursor);
    void SetTarget(const QString& target) { target_ = target; }

    /// Blinks every `milliseconds` until told `None`.
    void SetBlinkMode(BlinkMode mode, int milliseconds, const QString& text);

    /// True while the label looks and works like a link.
    [[nodiscard]] bool IsLink() const { return isLink_ && notify_; }

    /// What a click opens.
    [[nodiscard]] QString Target() const { return target_.isEmpty() ? rawText_ : target_; }

    /// Does what a click does.
    void Activate();

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void UpdateBehaviour();
    [[nodiscard]] QColor TextColour() const;
    [[nodiscard]] QStringList ShownLines() const;
    [[nodiscard]] QString ToolTipText() const;
    void ShowToolTip(QPoint globalPlace);

    LinkOpener* opener_;
    QString rawText_;  // as given, "&&" and all
    QString target_;
    ClickFunction onClick_;
    Colour textColour_ = NoColour;
    std::optional<QCursor> cursor_;
    bool notify_ = true;
    bool isLink_ = false;
    BlinkMode blinkMode_ = BlinkMode::None;
    bool blinkOn_ = false;
    QString blinkText_;
    int blinkTimer_ = 0;
};

/// Makes the label with `id` in `parent` a link; false when there is no such label.
bool AttachLink(const QWidget& parent, int id, const QString& text,
                const std::optional<QString>& target = std::nullopt,
                LinkLabel::ClickFunction onClick = {});

}  // namespace ostrova::uikit
