#pragma once

// Rows of controls on a page that is too narrow for its template.
//
// A template is made for one font on one page size. Where the font is larger or the page narrower,
// a control that keeps its distance from the right edge runs over those that keep theirs from the
// left one. Then, and only then, the controls of the row share the room between them.

#include <QWidget>
#include <initializer_list>

namespace ostrova::pages {

/// Pixels between the controls of a row that had to be resolved.
inline constexpr int NarrowGap = 4;

/// Keeps the controls of `page` with these ids, which stand side by side from left to right, from
/// running over each other or over the right edge, and their texts from being cut. Call it after
/// each relayout.
///
/// Nothing is moved while all stand at least `gap` apart and inside the page, and no push button is
/// narrower than its text. Otherwise the room from the first one's left to the last one's right
/// edge is shared: each gets the width that its text needs, and of the rest as much as its present
/// width is wider; where even the needed widths don't fit, the widest are cut to one width, so that
/// short texts stay whole. The text of a push button that is too narrow is cut with an ellipsis,
/// and shown whole in a tooltip. Ids without a visible control are left out.
///
///     KeepRowApart(*this, {1044, 1045, 2});  // two buttons on the left, Exit on the right
void KeepRowApart(const QWidget& page, std::initializer_list<int> ids, int gap = NarrowGap);

}  // namespace ostrova::pages
