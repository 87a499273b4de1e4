#include "uikit/open_link.h"

#include <QDesktopServices>

namespace ostrova::uikit {
namespace {

class DesktopLinkOpener final : public LinkOpener {
public:
    void Open(const QUrl& url) override { QDesktopServices::openUrl(url); }
};

bool MayBeOpened(const QUrl& url) {
    if (!url.isValid()) return false;
    const QString scheme = url.scheme();  // lower case, whatever was written
    if (scheme == QLatin1String("mailto")) return true;
    const bool isWeb = scheme == QLatin1String("http") || scheme == QLatin1String("https");
    return isWeb && !url.host().isEmpty();
}

}  // namespace

LinkOpener& DesktopLinks() {
    static DesktopLinkOpener opener;
    return opener;
}

bool OpenLink(const QString& target, LinkOpener& opener) {
    const QUrl url(target, QUrl::StrictMode);
    if (!MayBeOpened(url)) return false;
    opener.Open(url);
    return true;
}

}  // namespace ostrova::uikit
