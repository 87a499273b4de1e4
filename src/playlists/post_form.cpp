#include "playlists/post_form.h"

#include <algorithm>

namespace ostrova::playlists {
namespace {

/// The step that a request failed at, as the texts for the user name it.
const char* FailedStep(const platform::HttpResponse& response) {
    using platform::HttpStage;
    if (response.stage == HttpStage::Read) return "InternetReadFile";
    if (response.reachedNetwork) return "InternetSendRequest";
    const bool isSetUp =
        response.stage != HttpStage::Open || response.error == platform::HttpError::BadAddress;
    return isSetUp ? "InternetConnect" : "InternetOpen";
}

/// The address that is really asked: HTTP to port 80, whatever the scheme word. A port that `url`
/// has becomes part of the host's name. Empty without "://".
std::string PostAddress(const std::string& url) {
    const std::size_t colon = url.find(':');
    if (colon == std::string::npos || url.compare(colon + 1, 2, "//") != 0) return {};
    const std::size_t hostStart = colon + 3;
    const std::size_t hostEnd = std::min(url.find('/', hostStart), url.size());
    return "http://" + url.substr(hostStart, hostEnd - hostStart) + ":80" + url.substr(hostEnd);
}

}  // namespace

PostResult PostForm(const TransferTools& tools, std::size_t replySize, const std::string& url,
                    const std::string& body, const std::string& agent, const std::string& message,
                    ReportErrors reportErrors) {
    const bool reports = reportErrors == ReportErrors::Yes;
    PostResult result;
    const platform::HttpRequest request{.url = PostAddress(url), .agent = agent, .form = &body};
    if (request.url.empty()) {
        if (reports) {
            tools.messages->ShowInternalError("URL is missing 'http://' or similar:\n%s", url);
        }
        return result;
    }
    platform::HttpEvents events;
    events.onBody = [&](std::string_view piece) {
        result.reply += piece.substr(0, replySize - result.reply.size());
        return result.reply.size() < replySize;  // the rest is not asked for
    };
    events.onIdle = [&] { return tools.cancel == nullptr || !tools.cancel->load(); };
    const platform::HttpResponse response = tools.http->Perform(request, events);
    result.ok = response.Ok() || response.error == platform::HttpError::SinkFailed;
    if (!result.ok && reports) {
        tools.messages->ShowSystemError({response.code, response.detail}, "%s\n\n%s", message,
                                        FailedStep(response));
    }
    return result;
}

}  // namespace ostrova::playlists
