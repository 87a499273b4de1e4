#pragma once

// The standard boxes: one text, a fixed caption, an icon, and OK or Yes and No.

#include <QMessageBox>
#include <QWidget>
#include <string>

#include "feedback/messages.h"

namespace ostrova::uikit {

/// A box of `kind` that is not shown yet. `text` is code page 1252 and shown letter for letter.
[[nodiscard]] QMessageBox* MakeMessageBox(feedback::MessageKind kind, const std::string& text,
                                          QWidget* owner);

/// The same with the question "Yes" or "No"; "Yes" is the default, Escape is "No".
[[nodiscard]] QMessageBox* MakeYesNoBox(const std::string& text, QWidget* owner);

}  // namespace ostrova::uikit
