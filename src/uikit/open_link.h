#pragma once

// The one way in which the program opens a link outside itself.

#include <QString>
#include <QUrl>

namespace ostrova::uikit {

/// Opens addresses outside the program. A test records them instead.
class LinkOpener {
public:
    virtual ~LinkOpener() = default;

    /// `url` is valid and one that may be opened.
    virtual void Open(const QUrl& url) = 0;
};

/// The desktop's own handlers. Lives as long as the program.
[[nodiscard]] LinkOpener& DesktopLinks();

/// Opens `target` with `opener`. Targets come from pages and servers, so only what is well-formed
/// and a web address (http or https, with a host) or a mail address (mailto) is opened; true when
/// it was. Nothing is said about a refusal.
bool OpenLink(const QString& target, LinkOpener& opener);

}  // namespace ostrova::uikit
