// The links of the markup view: where they are, and how a mouse or a keyboard opens them.

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <map>
#include <set>

#include "uikit/hand_cursor.h"
#include "uikit/markup_view.h"
#include "uikit/plain_text.h"
#include "uikit/text.h"

namespace ostrova::uikit {
namespace {

/// One line as laid out, with its place in the document.
struct ShownLine {
    QTextLine line;
    QPointF blockOrigin;
    int first = 0;  // position of its first character
    int last = 0;   // of its last one; below `first` when it has none

    [[nodiscard]] double Top() const { return blockOrigin.y() + line.y(); }
    [[nodiscard]] double LeftOf(int position, int blockPosition) const {
        return blockOrigin.x() + line.cursorToX(std::max(position - blockPosition, 0));
    }
};

/// The character at `x` of the line: the one before the first that begins right of it.
int CharacterInLine(const ShownLine& shown, int blockPosition, double x) {
    for (int position = shown.first; position <= shown.last; ++position) {
        if (shown.LeftOf(position, blockPosition) > x) return position - 1;
    }
    return shown.last;
}

/// True for a focus that goes with the window, or to a menu, and comes back to the same link.
bool KeepsLink(Qt::FocusReason reason) {
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
}

}  // namespace

int MarkupView::CharIndexAt(QPoint point) const {
    const double x = point.x() + horizontalScrollBar()->value();
    const double y = point.y() + verticalScrollBar()->value();
    int found = -1;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const QPointF origin =
            document()->documentLayout()->blockBoundingRect(block).topLeft();  // lays it out, too
        for (int i = 0; i < block.layout()->lineCount(); ++i) {
            ShownLine shown{block.layout()->lineAt(i), origin};
            if (shown.Top() > y) return found;
            const bool hasBreakBefore = i == 0 && block.position() > 0;
            shown.first = block.position() + shown.line.textStart() - (hasBreakBefore ? 1 : 0);
            shown.last = block.position() + shown.line.textStart() + shown.line.textLength() - 1;
            found = CharacterInLine(shown, block.position(), x);
        }
    }
    return found;
}

const LinkRange* MarkupView::LinkAtPosition(int position) const {
    const auto newest =
        std::find_if(links_.rbegin(), links_.rend(), [position](const LinkRange& link) {
            return link.start <= position && position < link.end;
        });
    return newest == links_.rend() ? nullptr : &*newest;
}

std::optional<QString> MarkupView::LinkAt(QPoint point) const {
    const LinkRange* link = LinkAtPosition(CharIndexAt(point));
    return link == nullptr ? std::nullopt : std::optional(ToQString(link->url));
}

/// The links that a mouse can hit, in the order of the text: between two places where a range
/// begins or ends, the newest of the open ranges.
std::vector<const LinkRange*> MarkupView::LinksInOrder() const {
    std::map<int, std::vector<std::size_t>> changes;  // position to the ranges that change there
    for (std::size_t i = 0; i < links_.size(); ++i) {
        if (links_[i].start >= std::min(links_[i].end, Length())) continue;
        changes[links_[i].start].push_back(i);
        changes[links_[i].end].push_back(i);
    }
    std::set<std::size_t> open;
    std::set<std::size_t> known;
    std::vector<const LinkRange*> inOrder;
    for (const auto& [position, changed] : changes) {
        for (const std::size_t i : changed) {
            if (links_[i].start == position)
                open.insert(i);
            else
                open.erase(i);
        }
        if (open.empty() || position >= Length()) continue;
        if (known.insert(*open.rbegin()).second) inOrder.push_back(&links_[*open.rbegin()]);
    }
    return inOrder;
}

/// A view that has nothing to open and nothing to scroll is reached by the mouse only, as a label.
void MarkupView::UpdateTabStop() {
    const bool scrolls = verticalScrollBar()->maximum() > 0;
    setFocusPolicy(scrolls || !LinksInOrder().empty() ? Qt::StrongFocus : Qt::ClickFocus);
}

void MarkupView::FocusLink(const LinkRange* link) {
    focusedLink_ = link == nullptr ? std::nullopt : std::optional(*link);
    OutlineFocusedLink();
    setAccessibleDescription({});
    if (link == nullptr) return;
    QTextCursor start(document());
    start.setPosition(link->start);
    setTextCursor(start);  // brings it into sight
    setAccessibleDescription(QStringLiteral("Link to ") + ToQString(link->url));
    // Any further event of the focus on its way here would close the tooltip again.
    QTimer::singleShot(0, this, &MarkupView::ShowTarget);
}

void MarkupView::OutlineFocusedLink() {
    if (!focusedLink_) {
        setExtraSelections({});
        return;
    }
    ExtraSelection outline;
    outline.cursor = QTextCursor(document());
    outline.cursor.setPosition(focusedLink_->start);
    outline.cursor.setPosition(std::min(focusedLink_->end, Length()), QTextCursor::KeepAnchor);
    outline.format.setProperty(QTextFormat::OutlinePen,
                               QPen(palette().color(QPalette::Text), 1, Qt::DotLine));
    setExtraSelections({outline});
}

void MarkupView::ShowTarget() {
    if (!focusedLink_ || !hasFocus()) return;
    const QPoint below = viewport()->mapToGlobal(cursorRect().bottomLeft());
    QToolTip::showText(below, PlainToolTip(ToQString(focusedLink_->url)), this);
}

bool MarkupView::MoveLinkFocus(bool forwards) {
    const auto inOrder = LinksInOrder();
    if (inOrder.empty()) return false;
    const auto current = std::find_if(
        inOrder.begin(), inOrder.end(),
        [this](const LinkRange* link) { return focusedLink_ && *link == *focusedLink_; });
    if (current == inOrder.end()) {
        FocusLink(forwards ? inOrder.front() : inOrder.back());
        return true;
    }
    if (forwards ? current + 1 == inOrder.end() : current == inOrder.begin()) return false;
    FocusLink(forwards ? *(current + 1) : *(current - 1));
    return true;
}

bool MarkupView::focusNextPrevChild(bool next) {
    return MoveLinkFocus(next) || QTextEdit::focusNextPrevChild(next);
}

void MarkupView::focusInEvent(QFocusEvent* event) {
    QTextEdit::focusInEvent(event);
    if (KeepsLink(event->reason())) return;
    FocusLink(nullptr);
    if (event->reason() == Qt::TabFocusReason) MoveLinkFocus(true);
    if (event->reason() == Qt::BacktabFocusReason) MoveLinkFocus(false);
}

void MarkupView::focusOutEvent(QFocusEvent* event) {
    QTextEdit::focusOutEvent(event);
    if (!KeepsLink(event->reason())) FocusLink(nullptr);
}

void MarkupView::keyPressEvent(QKeyEvent* event) {
    const bool opens = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                       event->key() == Qt::Key_Space;
    if (opens && focusedLink_)
        OpenLink(ToQString(focusedLink_->url), *opener_);
    else
        QTextEdit::keyPressEvent(event);
}

bool MarkupView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QTextEdit::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const auto target = LinkAt(help->pos());
    QToolTip::showText(help->globalPos(), target ? PlainToolTip(*target) : QString(), this);
    return true;
}

void MarkupView::mouseMoveEvent(QMouseEvent* event) {
    const bool isOverLink = LinkAt(event->pos()).has_value();
    if (isOverLink != isOverLink_) {
        isOverLink_ = isOverLink;
        viewport()->setCursor(isOverLink ? HandCursor(devicePixelRatioF())
                                         : QCursor(Qt::IBeamCursor));
    }
    if (!isOverLink) QTextEdit::mouseMoveEvent(event);
}

/// A press on a link opens it and goes no further: no caret, no selection.
void MarkupView::mousePressEvent(QMouseEvent* event) {
    const auto target = LinkAt(event->pos());
    if (event->button() == Qt::LeftButton && target)
        OpenLink(*target, *opener_);
    else
        QTextEdit::mousePressEvent(event);
}

void MarkupView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!LinkAt(event->pos())) QTextEdit::mouseDoubleClickEvent(event);
}

void MarkupView::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const auto target = byMouse        ? LinkAt(event->pos())
                        : focusedLink_ ? std::optional(ToQString(focusedLink_->url))
                                       : std::nullopt;
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (target) {
        menu->addSeparator();
        menu->addAction(QStringLiteral("&Open Link"), this,
                        [this, link = *target] { OpenLink(link, *opener_); });
        menu->addAction(QStringLiteral("Copy &Link Address"), this,
                        [link = *target] { QApplication::clipboard()->setText(link); });
    }
    menu->popup(byMouse ? event->globalPos() : viewport()->mapToGlobal(cursorRect().bottomLeft()));
}

}  // namespace ostrova::uikit
