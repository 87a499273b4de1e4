#include "demo/faults.h"

#include <algorithm>
#include <array>

#include "demo/fault_answers.h"

namespace ostrova::demo {
namespace {

using Play = bool (*)(const ServerRequest&, Connection&);

/// Fits a fault that doesn't look at the request into the table.
template <bool (*Fault)(Connection&)>
bool Any(const ServerRequest& /*request*/, Connection& connection) {
    return Fault(connection);
}

struct Fault {
    FaultName name;
    Play play;
};

const Fault Faults[] = {
    {{"silent", "takes the request and never answers"}, Any<fault::Silent>},
    {{"hang", "sends half of the body, then nothing more"}, Any<fault::Hang>},
    {{"drip", "sends the body at 2 bytes a second"}, Any<fault::Drip>},
    {{"slow", "sends the body at 2,000 bytes a second, whole"}, Any<fault::Slow>},
    {{"reset", "resets the connection in the middle of the body"}, Any<fault::Reset>},
    {{"reset-early", "resets the connection instead of answering"}, Any<[](Connection& c) {
         c.Reset();
         return false;
     }>},
    {{"hangup", "closes the connection instead of answering"},
     Any<[](Connection&) { return false; }>},
    {{"close-kept", "answers well, then closes a connection that it said it would keep"},
     Any<fault::CloseKept>},
    {{"trunc", "announces twice the length that it sends"}, Any<fault::Truncated>},
    {{"longer", "sends more than the length that it announces"}, Any<fault::Longer>},
    {{"two-lengths", "announces two different lengths"}, Any<fault::TwoLengths>},
    {{"negative-length", "announces a length of -1"}, Any<fault::NegativeLength>},
    {{"chunk-garbage", "sends chunks, one without a size"}, Any<fault::ChunkGarbage>},
    {{"chunk-cut", "ends in the middle of a chunk"}, Any<fault::ChunkCut>},
    {{"chunk-huge", "announces a chunk of 17 digits"}, Any<fault::ChunkHuge>},
    {{"close", "announces no length and closes in the middle of the page"}, Any<fault::Closed>},
    {{"close-whole", "announces no length and closes after the whole page"},
     Any<fault::ClosedWhole>},
    {{"gzip", "sends the page compressed, unasked"}, Any<fault::WholeGzip>},
    {{"gzip-bomb", "sends a few hundred kilobytes that unpack to 100 MB"}, Any<fault::Bomb>},
    {{"gzip-cut", "sends the first part of a compressed page with that part's length"},
     Any<fault::CutGzip>},
    {{"gzip-not", "calls the plain page compressed"}, Any<fault::NoGzip>},
    {{"gzip-layers", "sends the page compressed twelve times over"}, Any<fault::GzipLayers>},
    {{"gzip-transfer", "compresses the transfer instead of the page"}, Any<fault::TransferGzip>},
    {{"redirect", "redirects once, to the page"},
     [](const ServerRequest& request, Connection& connection) {
         return fault::Chain(request, connection, 1);
     }},
    {{"redirect-chain-10", "redirects ten times, to the page"},
     [](const ServerRequest& request, Connection& connection) {
         return fault::Chain(request, connection, 10);
     }},
    {{"redirect-chain-50", "redirects fifty times, to the page"},
     [](const ServerRequest& request, Connection& connection) {
         return fault::Chain(request, connection, 50);
     }},
    {{"redirect-loop", "redirects to itself"}, Any<fault::RedirectLoop>},
    {{"redirect-file", "redirects to a file: address"}, Any<fault::RedirectFile>},
    {{"redirect-ftp", "redirects to an ftp: address"}, Any<fault::RedirectFtp>},
    {{"redirect-data", "redirects to a data: address"}, Any<fault::RedirectData>},
    {{"redirect-gopher", "redirects to a gopher: address"}, Any<fault::RedirectGopher>},
    {{"redirect-https", "redirects to an https: address, where nobody speaks TLS"},
     fault::RedirectHttps},
    {{"login", "redirects to a login page on another host (localhost)"}, fault::Login},
    {{"404", "has no such page"},
     Any<[](Connection& c) { return fault::Status(c, "404 Not Found"); }>},
    {{"410", "has the page no more"},
     Any<[](Connection& c) { return fault::Status(c, "410 Gone"); }>},
    {{"403", "forbids the page"},
     Any<[](Connection& c) { return fault::Status(c, "403 Forbidden"); }>},
    {{"429", "finds the requests too many, for two minutes"}, Any<[](Connection& c) {
         return fault::Status(c, "429 Too Many Requests", "Retry-After: 120\r\n");
     }>},
    {{"500", "has failed"}, Any<[](Connection& c) { return fault::Status(c, "500 Oh no"); }>},
    {{"503", "is being repaired, for two hours"}, Any<[](Connection& c) {
         return fault::Status(c, "503 Service Unavailable", "Retry-After: 7200\r\n");
     }>},
    {{"204", "answers that there is nothing to see"},
     Any<[](Connection& c) { return fault::Bare(c, "204 No Content"); }>},
    {{"206", "sends a part that nobody asked for"}, Any<[](Connection& c) {
         return fault::Status(c, "206 Partial Content", "Content-Range: bytes 0-46/1000\r\n");
     }>},
    {{"304", "answers that nothing has changed"},
     Any<[](Connection& c) { return fault::Bare(c, "304 Not Modified"); }>},
    {{"error-page", "sends an error page with status 200"}, Any<fault::ErrorPage>},
    {{"empty", "sends nothing with status 200"}, Any<fault::Empty>},
    {{"endless", "sends 100 MB without announcing a length"}, Any<fault::EndlessUnknown>},
    {{"endless-length", "announces and sends 100 MB"}, Any<fault::EndlessKnown>},
    {{"header-bomb", "sends header lines without end"}, Any<fault::HeaderBomb>},
    {{"big-header", "sends a header line of 200 KB"}, Any<fault::BigHeader>},
    {{"continue-2000", "says \"100 Continue\" 2,000 times, then sends the page"},
     Any<fault::Continue2000>},
    {{"http09", "sends the page without any header"}, Any<fault::Http09>},
    {{"http2", "speaks HTTP/2 unasked"}, Any<fault::Http2>},
    {{"tls-garbage", "answers with a piece of TLS"}, Any<fault::TlsGarbage>},
    {{"nul-page", "sends a page with zero bytes in it"}, Any<fault::NulPage>},
    {{"long-lines", "sends a page of lines of a megabyte"}, Any<fault::LongLines>},
    {{"many-lines", "sends a page of a million lines"}, Any<fault::ManyLines>},
    {{"many-links", "sends a page of a hundred thousand links"}, Any<fault::ManyLinks>},
    {{"cr-only", "sends a page whose lines end with CR alone"}, Any<fault::OldLineEnds>},
    {{"corrected", "sends another page every second"}, Any<fault::Corrected>},
};

}  // namespace

std::span<const FaultName> FaultNames() {
    static const auto names = [] {
        std::array<FaultName, std::size(Faults)> all;
        std::transform(std::begin(Faults), std::end(Faults), all.begin(),
                       [](const Fault& fault) { return fault.name; });
        return all;
    }();
    return names;
}

bool PlayFault(std::string_view name, const ServerRequest& request, Connection& connection) {
    for (const Fault& fault : Faults) {
        if (fault.name.name == name) return fault.play(request, connection);
    }
    return fault::Status(connection, "404 Not Found");
}

}  // namespace ostrova::demo
