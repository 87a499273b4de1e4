#include "uikit/text.h"

#include "util/code_page.h"

namespace ostrova::uikit {

QString ToQString(std::string_view text) {
    const std::string utf8 = util::ToUtf8(text);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string FromQString(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    return util::FromUtf8({utf8.constData(), static_cast<std::size_t>(utf8.size())});
}

}  // namespace ostrova::uikit
