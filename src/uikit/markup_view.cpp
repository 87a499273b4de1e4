#include "uikit/markup_view.h"

#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <algorithm>
#include <utility>

#include "uikit/qt_colour.h"
#include "uikit/text.h"

namespace ostrova::uikit {
namespace {

constexpr int LargestHeight = 1638 * TwipsPerPoint;  // as large as a text view's fonts ever get

// Black stands for the palette's own text colour, so that plain words can be read on any background
// and a link among them is blue.
constexpr Colour DefaultColour = 0x000000;

}  // namespace

MarkupView::MarkupView(QWidget* parent, LinkOpener& links) : QTextEdit(parent), opener_(&links) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setAcceptRichText(false);
    setAcceptDrops(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    document()->setDocumentMargin(0);
    viewport()->setMouseTracking(true);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &MarkupView::UpdateTabStop);
    UpdateTabStop();
}

void MarkupView::SetMarkup(std::string_view markup) {
    Clear();
    AppendMarkup(markup);
}

void MarkupView::AppendMarkup(std::string_view markup) {
    Add({true, {std::string(markup)}});
}

void MarkupView::SetPlainContent(std::string_view text) {
    Clear();
    AppendStyledText(text, 0, NoColour, -1);
}

void MarkupView::AppendStyledText(std::string_view text, std::uint32_t effects, Colour colour,
                                  int height) {
    Add({false, {std::string(text), effects, colour, height}});
}

int MarkupView::DefaultTextHeight() const {
    if (font().pointSizeF() > 0) return qRound(font().pointSizeF() * TwipsPerPoint);
    constexpr int TwipsPerInch = 72 * TwipsPerPoint;
    return font().pixelSize() * TwipsPerInch / logicalDpiY();
}

void MarkupView::UseDialogFace() {
    setFrameShape(QFrame::NoFrame);
    viewport()->setBackgroundRole(QPalette::Window);
    viewport()->setAutoFillBackground(false);  // a tab sheet, say, has a background of its own
}

void MarkupView::Clear() {
    contents_.clear();
    focusedLink_.reset();
    setExtraSelections({});
    clear();
}

void MarkupView::Add(Content content) {
    Render(content, &links_);
    contents_.push_back(std::move(content));
    if (contents_.size() == 1) moveCursor(QTextCursor::Start);  // shows the beginning
    UpdateTabStop();
}

/// Appends `content` to the document, and its links to `links` unless there are none wanted.
void MarkupView::Render(const Content& content, std::vector<LinkRange>* links) {
    if (!content.isMarkup) {
        Insert(MessageToQString(content.text.text), content.text);
        return;
    }
    const int start = Length();
    RenderedMarkup rendered = RenderMarkup(content.text.text, DefaultColour, DefaultTextHeight());
    QTextCursor edit(document());
    edit.beginEditBlock();
    for (const MarkupRun& run : rendered.runs) Insert(ToQString(run.text), run);
    edit.endEditBlock();
    if (links == nullptr) return;
    for (LinkRange& link : rendered.links) {
        link.start += start;
        if (link.end >= 0) link.end += start;
        links->push_back(std::move(link));
    }
}

/// The same text in another look: positions, links, the focus, the selection and what is in view
/// stay.
void MarkupView::RenderAgain() {
    if (contents_.empty()) return;
    const int anchor = textCursor().anchor();
    const int position = textCursor().position();
    const int across = horizontalScrollBar()->value();
    const int down = verticalScrollBar()->value();
    clear();
    for (const Content& content : contents_) Render(content, nullptr);
    QTextCursor after(document());
    after.setPosition(anchor);
    after.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(after);  // and brings it into view
    horizontalScrollBar()->setValue(across);
    verticalScrollBar()->setValue(down);
    OutlineFocusedLink();
}

void MarkupView::Insert(QString text, const MarkupRun& look) {
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    // A document takes CR LF for one break: positions would no longer be those of the text.
    end.insertText(text.replace(QLatin1Char('\r'), QLatin1Char(' ')), FormatOf(look));
}

QTextCharFormat MarkupView::FormatOf(const MarkupRun& run) const {
    QTextCharFormat format;
    if ((run.effects & EffectBold) != 0) format.setFontWeight(QFont::Bold);
    if ((run.effects & EffectItalic) != 0) format.setFontItalic(true);
    if ((run.effects & EffectUnderline) != 0) format.setFontUnderline(true);
    if (run.colour != NoColour && run.colour != DefaultColour) {
        const QColor background = palette().color(viewport()->backgroundRole());
        format.setForeground(ReadableOn(background, ToQColor(run.colour)));
    }
    if (run.height >= 0 && run.height != DefaultTextHeight()) {
        // A font of no height can't be made; the smallest that can is as good as none.
        const int height = std::clamp(run.height, TwipsPerPoint, LargestHeight);
        format.setFontPointSize(static_cast<double>(height) / TwipsPerPoint);
    }
    return format;
}

int MarkupView::Length() const {
    return document()->characterCount() - 1;  // the document's own last break is not content
}

void MarkupView::changeEvent(QEvent* event) {
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        RenderAgain();
    }
}

QMimeData* MarkupView::createMimeDataFromSelection() const {
    auto* copied = new QMimeData;  // owned by the clipboard that asked for it
    copied->setText(textCursor().selection().toPlainText());
    return copied;
}

QVariant MarkupView::loadResource(int /*type*/, const QUrl& /*name*/) {
    return {};  // nothing that is shown is ever fetched
}

}  // namespace ostrova::uikit
