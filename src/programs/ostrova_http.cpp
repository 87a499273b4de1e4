// The module that brings the network into the program with the window.

#include "platform/http.h"

/// A new client, which the caller owns.
extern "C" ostrova::platform::HttpClient* OstrovaMakeHttpClient() {
    return ostrova::platform::MakeHttpClient().release();
}
