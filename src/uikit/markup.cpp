#include "uikit/markup.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "uikit/markup_font.h"
#include "util/compare.h"
#include "util/format.h"
#include "util/text.h"

namespace ostrova::uikit {
namespace {

struct Entity {
    std::string_view name;
    std::string_view text;
};

constexpr std::array<Entity, 5> ViewEntities = {
    {{"gt", ">"}, {"lt", "<"}, {"ccedil", "c"}, {"amp", "&"}, {"copy", "\xA9"}}};

constexpr std::array<Entity, 5> PlainEntities = {
    {{"rarr", "->"}, {"gt", ">"}, {"lt", "<"}, {"ccedil", "c"}, {"amp", "&"}}};

/// A name is compared over its own length, so that "g" is "gt" and no name at all the first.
std::string_view EntityText(std::string_view name, std::span<const Entity> entities) {
    for (const Entity& entity : entities) {
        if (util::CompareNNoCase(name, entity.name, name.size()) == 0) return entity.text;
    }
    return " ";
}

class Renderer {
public:
    Renderer(std::string_view text, Colour colour, int height)
        : text_(text), lastTagEnd_(text.rfind('>')), lastEntityEnd_(text.rfind(';')) {
        font_ = {colour, height};
        fontStack_.fill(font_);
        listCounter_.fill(-1);
    }

    RenderedMarkup Render() {
        while (position_ < text_.size()) {
            if (text_[position_] != '<' || !ReadTag()) ReadText();
        }
        return std::move(result_);
    }

private:
    static constexpr int KeptLevels = 10;     // of lists and of fonts
    static constexpr int DeepestIndent = 20;  // lists nested deeper indent no further
    static constexpr std::string_view LevelIndent = "    ";

    [[nodiscard]] bool Has(std::string_view marker) const {
        return util::HasMarkerAt(text_, position_, marker);
    }
    [[nodiscard]] bool HasLater(std::size_t last) const {
        return last != std::string_view::npos && last > position_;
    }
    void SkipPast(char c, std::size_t from) {
        const std::size_t end = text_.find(c, from);
        position_ = end == std::string_view::npos ? text_.size() : end + 1;
    }

    bool ReadTag();
    bool ReadListTag();
    bool ReadEffectTag();
    bool ReadFontTag();
    bool ReadLinkTag();
    void OpenLink();
    void ReadText();
    void ReadPlainText();

    void BeginListItem();
    void IndentContinuation();
    [[nodiscard]] std::string Indent() const;
    [[nodiscard]] std::string ListMarker();

    void AppendWords(std::string_view words);
    void AppendPiece(std::string_view piece) { Append(piece, effects_, font_.colour); }
    void Append(std::string_view piece, std::uint32_t effects, Colour colour);

    std::string_view text_;
    std::size_t lastTagEnd_;     // where the last ">" and ";" stand: without them every "<" would
    std::size_t lastEntityEnd_;  // search the whole rest
    std::size_t position_ = 0;
    RenderedMarkup result_;
    int length_ = 0;  // characters appended
    int listDepth_ = 0;
    std::array<int, KeptLevels> listCounter_{};  // -1: bullets
    bool isInLink_ = false;
    bool isAtLineStart_ = true;  // ordinary text leaves it set
    std::uint32_t effects_ = 0;
    FontStyle font_;
    int fontDepth_ = 0;
    std::array<FontStyle, KeptLevels> fontStack_{};
};

bool Renderer::ReadTag() {
    const std::size_t start = position_;
    if (ReadListTag() || ReadEffectTag() || ReadFontTag() || ReadLinkTag()) {
        // A link's tag, or the end of the rendering, has moved the position itself.
        if (position_ == start) SkipPast('>', start);
        return true;
    }
    if (!HasLater(lastTagEnd_)) return false;
    SkipPast('>', start);
    return true;
}

bool Renderer::ReadListTag() {
    if (Has("<ul>")) {
        ++listDepth_;
    } else if (Has("<ol>")) {
        ++listDepth_;
        if (listDepth_ < KeptLevels) listCounter_[listDepth_] = 1;
    } else if (Has("</ul>") || Has("</ol>")) {
        if (listDepth_ > 0) {
            if (listDepth_ < KeptLevels) listCounter_[listDepth_] = -1;
            --listDepth_;
        }
    } else if (Has("<li>")) {
        BeginListItem();
    } else {
        return false;
    }
    return true;
}

bool Renderer::ReadEffectTag() {
    if (Has("<b>"))
        effects_ |= EffectBold;
    else if (Has("</b>"))
        effects_ &= ~EffectBold;
    else if (Has("<i>"))
        effects_ |= EffectItalic;
    else if (Has("</i>"))
        effects_ &= ~EffectItalic;
    else
        return false;
    return true;
}

bool Renderer::ReadFontTag() {
    constexpr std::string_view Opening = "<font ";
    if (Has(Opening)) {
        if (fontDepth_ < KeptLevels) fontStack_[fontDepth_] = font_;
        ++fontDepth_;
        ApplyFontAttributes(text_.substr(position_ + Opening.size()), font_);
        return true;
    }
    if (!Has("</font>")) return false;
    if (fontDepth_ > 0) --fontDepth_;
    if (fontDepth_ < KeptLevels) font_ = fontStack_[fontDepth_];
    return true;
}

bool Renderer::ReadLinkTag() {
    if (Has("<a ")) {
        OpenLink();
        return true;
    }
    if (!isInLink_ || !Has("</a>")) return false;
    result_.links.back().end = length_;
    isInLink_ = false;
    return true;
}

/// Without a quoted target the rendering ends here.
void Renderer::OpenLink() {
    constexpr std::string_view Attribute = "href=\"";
    std::size_t start = position_;
    while (start < text_.size() && !util::HasMarkerAt(text_, start, Attribute)) ++start;
    const std::size_t target = std::min(start + Attribute.size(), text_.size());
    const std::size_t end = text_.find('"', target);
    if (start >= text_.size() || end == std::string_view::npos) {
        position_ = text_.size();
        return;
    }
    result_.links.push_back({length_, -1, std::string(text_.substr(target, end - target))});
    isInLink_ = true;
    SkipPast('>', target);
}

void Renderer::BeginListItem() {
    const std::string lineBreak = isAtLineStart_ ? "" : "\n";
    AppendPiece(lineBreak + Indent() + ListMarker());
    isAtLineStart_ = false;
}

std::string Renderer::Indent() const {
    std::string indent;
    for (int level = 0; level < std::min(listDepth_, DeepestIndent); ++level) indent += LevelIndent;
    return indent;
}

std::string Renderer::ListMarker() {
    if (listDepth_ < KeptLevels && listCounter_[listDepth_] >= 0) {
        return util::Format("%d. ", listCounter_[listDepth_]++);
    }
    return listDepth_ % 2 == 1 ? "* " : "- ";
}

/// Further lines of a list item stand under its text.
void Renderer::IndentContinuation() {
    if (!isAtLineStart_ || listDepth_ == 0) return;
    AppendPiece(Indent() + "   ");
    isAtLineStart_ = false;
}

void Renderer::ReadText() {
    IndentContinuation();
    const char c = text_[position_];
    if (c == '&' && HasLater(lastEntityEnd_)) {
        const std::size_t name = position_ + 1;
        SkipPast(';', name);
        AppendWords(EntityText(text_.substr(name, position_ - 1 - name), ViewEntities));
    } else if (c == '\n') {
        AppendPiece("\n");
        isAtLineStart_ = true;
        ++position_;
    } else {
        ReadPlainText();
    }
}

void Renderer::ReadPlainText() {
    const std::size_t end = std::min(text_.find_first_of("<&\n", position_ + 1), text_.size());
    AppendWords(text_.substr(position_, end - position_));
    position_ = end;
}

void Renderer::AppendWords(std::string_view words) {
    if (isInLink_)
        Append(words, effects_ | EffectUnderline, font_.colour | Blue);
    else
        AppendPiece(words);
}

void Renderer::Append(std::string_view piece, std::uint32_t effects, Colour colour) {
    if (piece.empty()) return;
    length_ += static_cast<int>(piece.size());
    auto& runs = result_.runs;
    const bool looksAlike = !runs.empty() && runs.back().effects == effects &&
                            runs.back().colour == colour && runs.back().height == font_.height;
    if (looksAlike)
        runs.back().text += piece;
    else
        runs.push_back({std::string(piece), effects, colour, font_.height});
}

}  // namespace

RenderedMarkup RenderMarkup(std::string_view markup, Colour colour, int height) {
    return Renderer(markup, colour, height).Render();
}

std::string MarkupToPlainText(std::string_view markup) {
    const std::size_t lastTagEnd = markup.rfind('>');
    const std::size_t lastEntityEnd = markup.rfind(';');
    const auto endsLater = [](std::size_t last, std::size_t position) {
        return last != std::string_view::npos && last > position;
    };
    std::string plain;
    std::size_t position = 0;
    while (position < markup.size()) {
        const char c = markup[position];
        if (c == '<' && endsLater(lastTagEnd, position)) {
            if (util::HasMarkerAt(markup, position, "<li>")) plain += "  * ";
            position = markup.find('>', position) + 1;
        } else if (c == '&' && endsLater(lastEntityEnd, position)) {
            const std::size_t end = markup.find(';', position);
            plain += EntityText(markup.substr(position + 1, end - position - 1), PlainEntities);
            position = end + 1;
        } else {
            plain += c;
            ++position;
        }
    }
    return plain;
}

}  // namespace ostrova::uikit
