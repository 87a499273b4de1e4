#pragma once

// Texts on their way between the engine (code page 1252) and widgets.

#include <QString>
#include <string>
#include <string_view>

namespace ostrova::uikit {

/// `text`, which is code page 1252, for a widget: one character a byte, nothing lost.
[[nodiscard]] QString ToQString(std::string_view text);

/// The same of a message, which may hold a path with letters that the code page lacks
/// (`util::PathAsText`): it is then UTF-8 as a whole, and shown as that.
[[nodiscard]] QString MessageToQString(std::string_view text);

/// What a user typed, for the engine: code page 1252; characters that it lacks are replaced.
[[nodiscard]] std::string FromQString(const QString& text);

}  // namespace ostrova::uikit
