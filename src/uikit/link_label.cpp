#include "uikit/link_label.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "uikit/dialog_builder.h"
#include "uikit/hand_cursor.h"
#include "uikit/plain_text.h"
#include "uikit/qt_colour.h"

namespace ostrova::uikit {

LinkLabel::LinkLabel(QWidget* parent, LinkOpener& links) : QLabel(parent), opener_(&links) {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

void LinkLabel::SetText(const QString& text) {
    rawText_ = text;
    setText(QString(text).replace(QLatin1String("&&"), QLatin1String("&")));
    repaint();
}

void LinkLabel::SetPlainText(const QString& text) {
    isLink_ = false;
    SetText(text);
    SetNotify(false);
    SetTextColour(NoColour);
    SetUnderline(false);
}

void LinkLabel::SetLink(const QString& text, const std::optional<QString>& target,
                        ClickFunction onClick) {
    isLink_ = true;
    SetText(text);
    target_ = target.value_or(text);
    onClick_ = std::move(onClick);
    SetTextColour(Blue);
    SetUnderline(true);
    SetCursor(HandCursor(devicePixelRatioF()));
    SetNotify(true);
}

void LinkLabel::SetTextColour(Colour colour) {
    textColour_ = colour;
    repaint();
}

void LinkLabel::SetBold(bool bold) {
    QFont changed = font();
    changed.setBold(bold);
    setFont(changed);
    repaint();
}

void LinkLabel::SetUnderline(bool underline) {
    QFont changed = font();
    changed.setUnderline(underline);
    setFont(changed);
    repaint();
}

void LinkLabel::SetNotify(bool notify) {
    notify_ = notify;
    UpdateBehaviour();
}

void LinkLabel::SetCursor(const QCursor& cursor) {
    cursor_ = cursor;
    UpdateBehaviour();
}

/// A label that takes no clicks shows no hand and is passed over by Tab.
void LinkLabel::UpdateBehaviour() {
    setFocusPolicy(IsLink() ? Qt::StrongFocus : Qt::NoFocus);
    if (notify_ && cursor_)
        setCursor(*cursor_);
    else
        unsetCursor();
}

void LinkLabel::SetBlinkMode(BlinkMode mode, int milliseconds, const QString& text) {
    blinkMode_ = mode;
    blinkText_ = text;
    if (blinkTimer_ != 0) killTimer(std::exchange(blinkTimer_, 0));
    if (mode != BlinkMode::None) blinkTimer_ = startTimer(milliseconds);
}

void LinkLabel::timerEvent(QTimerEvent* /*event*/) {
    blinkOn_ = !blinkOn_;
    if (blinkMode_ == BlinkMode::Text) SetText(blinkOn_ ? QString() : blinkText_);
    if (blinkMode_ == BlinkMode::Background) repaint();
}

void LinkLabel::Activate() {
    const QString target = Target();
    if (onClick_)
        onClick_(target);
    else
        OpenLink(target, *opener_);
}

void LinkLabel::mousePressEvent(QMouseEvent* event) {
    if (notify_ && event->button() == Qt::LeftButton) Activate();
    QLabel::mousePressEvent(event);
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
    const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                       event->key() == Qt::Key_Space;
    if (opens && IsLink())
        Activate();
    else
        QLabel::keyPressEvent(event);
}

QColor LinkLabel::TextColour() const {
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    if (textColour_ == NoColour) return palette().color(group, QPalette::WindowText);
    return ReadableOn(palette().color(QPalette::Window), ToQColor(textColour_));
}

/// The lines of the text, each cut to the width of the label.
QStringList LinkLabel::ShownLines() const {
    QStringList lines = text().split(QLatin1Char('\n'));
    for (QString& line : lines) {
        line = fontMetrics().elidedText(line, Qt::ElideRight, contentsRect().width());
    }
    return lines;
}

void LinkLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QString shown = ShownLines().join(QLatin1Char('\n'));
    if (hasFocus()) {  // as in lists and texts; that of some styles is hardly seen in dark mode
        const QRect frame =
            painter.boundingRect(contentsRect(), Qt::AlignLeft | Qt::AlignTop, shown)
                .intersected(contentsRect());
        painter.setPen(QPen(palette().color(QPalette::WindowText), 1, Qt::DotLine));
        painter.drawRect(frame.adjusted(0, 0, -1, -1));
    }
    painter.setPen(TextColour());
    painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignTop, shown);
}

/// Longer texts are cut.
QSize LinkLabel::minimumSizeHint() const {
    constexpr int FewestCharacters = 10;
    const int few = fontMetrics().averageCharWidth() * FewestCharacters;
    const QSize whole = QLabel::minimumSizeHint();
    return {std::min(whole.width(), few), whole.height()};
}

QString LinkLabel::ToolTipText() const {
    QStringList parts;
    if (ShownLines().join(QLatin1Char('\n')) != text()) parts += text();
    if (IsLink() && !onClick_ && !parts.contains(Target())) parts += Target();
    return parts.join(QLatin1Char('\n'));
}

bool LinkLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QLabel::event(event);
    ShowToolTip(static_cast<QHelpEvent*>(event)->globalPos());
    return true;
}

void LinkLabel::ShowToolTip(QPoint globalPlace) {
    const QString tip = ToolTipText();
    QToolTip::showText(globalPlace, tip.isEmpty() ? tip : PlainToolTip(tip), this);
}

void LinkLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    const bool byTab =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (!byTab) return;
    // Any further event of the focus on its way here would close the tooltip again.
    QTimer::singleShot(0, this, [this] {
        if (hasFocus()) ShowToolTip(mapToGlobal(rect().bottomLeft()));
    });
}

bool AttachLink(const QWidget& parent, int id, const QString& text,
                const std::optional<QString>& target, LinkLabel::ClickFunction onClick) {
    auto* label = qobject_cast<LinkLabel*>(ControlById(parent, id));
    if (label == nullptr) return false;
    label->SetLink(text, target, std::move(onClick));
    return true;
}

}  // namespace ostrova::uikit
