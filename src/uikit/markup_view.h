#pragma once

// The view that shows markup (markup.h) and opens its links.

#include <QTextEdit>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "uikit/markup.h"
#include "uikit/open_link.h"

namespace ostrova::uikit {

/// A read-only view of formatted text. Character positions are positions of its document, in which
/// a line break is one character. A link is opened by a click, or by Enter or Space when Tab has
/// reached it; its target shows in a tooltip.
///
/// Words without a colour or a size of their own follow the palette and the font of the view,
/// whenever these change. Tab stops at each link, and at a text that has to be scrolled.
class MarkupView final : public QTextEdit {
    Q_OBJECT

public:
    /// `links` is borrowed and outlives the view.
    explicit MarkupView(QWidget* parent = nullptr, LinkOpener& links = DesktopLinks());

    /// Replaces the content by `markup`, code page 1252. The links of earlier content stay behind
    /// the new ones, at their old positions.
    void SetMarkup(std::string_view markup);

    /// Adds `markup` at the end.
    void AppendMarkup(std::string_view markup);

    /// Replaces the content by `text`, a message (`MessageToQString`), every character as it
    /// stands.
    void SetPlainContent(std::string_view text);

    /// Adds `text` at the end, as `SetPlainContent` does, with `effects` (`TextEffects`), a
    /// colour (`NoColour` and black: the palette's) and a height in twips (below 0: the default).
    void AppendStyledText(std::string_view text, std::uint32_t effects, Colour colour, int height);

    /// The height of text that has no size of its own, in twips.
    [[nodiscard]] int DefaultTextHeight() const;

    /// The position of the character at `point` of the viewport, or -1 above the text. Right of a
    /// line's end that is the line's last character. A line break stands at the start of the line
    /// that it begins.
    [[nodiscard]] int CharIndexAt(QPoint point) const;

    /// The target of the link at `point` of the viewport, or nothing. Where ranges overlap the
    /// newest counts.
    [[nodiscard]] std::optional<QString> LinkAt(QPoint point) const;

    /// All links, oldest first; ranges of earlier content included.
    [[nodiscard]] const std::vector<LinkRange>& Links() const { return links_; }

    /// Gives the view the background of the dialog it stands in, and no frame.
    void UseDialogFace();

protected:
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
    [[nodiscard]] QVariant loadResource(int type, const QUrl& name) override;

private:
    /// Something that was added, kept to be rendered again in another font or palette.
    struct Content {
        bool isMarkup = true;
        MarkupRun text;
    };

    void Clear();
    void Add(Content content);
    void Render(const Content& content, std::vector<LinkRange>* links);
    void RenderAgain();
    void Insert(QString text, const MarkupRun& look);
    [[nodiscard]] QTextCharFormat FormatOf(const MarkupRun& run) const;

    [[nodiscard]] int Length() const;
    [[nodiscard]] const LinkRange* LinkAtPosition(int position) const;
    [[nodiscard]] std::vector<const LinkRange*> LinksInOrder() const;
    bool MoveLinkFocus(bool forwards);
    void FocusLink(const LinkRange* link);
    void OutlineFocusedLink();
    void UpdateTabStop();
    void ShowTarget();

    LinkOpener* opener_;
    std::vector<Content> contents_;
    std::vector<LinkRange> links_;
    std::optional<LinkRange> focusedLink_;  // the one that Enter opens
    bool isOverLink_ = false;
};

}  // namespace ostrova::uikit
