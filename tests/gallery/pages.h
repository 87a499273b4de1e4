#pragma once

// The pages of the gallery: each shows one kind of control in every state.

#include <QWidget>

namespace ostrova::gallery {

[[nodiscard]] QWidget* MakeMarkupPage(QWidget* parent);
[[nodiscard]] QWidget* MakeLinkPage(QWidget* parent);
[[nodiscard]] QWidget* MakeCursorPage(QWidget* parent);

/// Every kind of control that a template can hold, with anchors that follow the page's size.
[[nodiscard]] QWidget* MakeTemplatePage(QWidget* parent);

/// A button for each box.
[[nodiscard]] QWidget* MakeBoxPage(QWidget* parent);

}  // namespace ostrova::gallery
