#include "platform/http_headers.h"

#include "util/compare.h"
#include "util/text.h"

namespace ostrova::platform {

bool HttpHeaders::Add(std::string_view line) {
    if (isComplete_) return false;  // what follows the last chunk
    if (!isOpen_) {
        Begin(line);
        return false;
    }
    const std::string_view content = util::TrimRight(line);
    if (content.empty()) {
        isOpen_ = false;
        isComplete_ = IsFinal();
        return isComplete_;
    }
    const std::size_t colon = content.find(':');
    if (colon != std::string_view::npos) {
        AddField(util::TrimRight(content.substr(0, colon)), util::Trim(content.substr(colon + 1)));
    }
    return false;
}

void HttpHeaders::Begin(std::string_view statusLine) {
    *this = HttpHeaders();
    isOpen_ = true;
    const std::size_t space = statusLine.find(' ');
    if (space != std::string_view::npos) status_ = util::LeadingNumber(statusLine.substr(space));
}

void HttpHeaders::AddField(std::string_view name, std::string_view value) {
    const auto is = [](std::string_view a, std::string_view b) {
        return util::CompareNoCase(a, b) == 0;
    };
    if (is(name, "Content-Encoding")) {
        isEncoded_ |= !value.empty() && !is(value, "identity");
    } else if (is(name, "Transfer-Encoding")) {
        isChunked_ |= is(value, "chunked");
        isEncoded_ |= !is(value, "chunked") && !is(value, "identity");
    } else if (is(name, "Content-Length")) {
        isContradictory_ |= !length_.empty() && length_ != value;
        length_ = value;
    } else if (is(name, "Location")) {
        hasLocation_ |= !value.empty();
    }
}

bool HttpHeaders::IsFinal() const {
    const bool isInterim = status_ < 200;
    const bool isRedirection = status_ >= 300 && status_ < 400 && hasLocation_;
    return !isInterim && !isRedirection;
}

}  // namespace ostrova::platform
