#include "uikit/text.h"

#include "util/code_page.h"

namespace ostrova::uikit {

namespace {

QString FromUtf8Text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

QString ToQString(std::string_view text) {
    return FromUtf8Text(util::ToUtf8(text));
}

QString MessageToQString(std::string_view text) {
    const bool isPathInUtf8 = util::IsUtf8(text) && util::ToUtf8(util::FromUtf8(text)) != text;
    return isPathInUtf8 ? FromUtf8Text(text) : ToQString(text);
}

std::string FromQString(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    return util::FromUtf8({utf8.constData(), static_cast<std::size_t>(utf8.size())});
}

}  // namespace ostrova::uikit
