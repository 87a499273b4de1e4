#pragma once

// What each fault of demo/faults.h sends. As handlers do, they return whether the connection is
// kept.

#include <string>
#include <string_view>

#include "demo/http_server.h"

namespace ostrova::demo {

/// The page that the faults begin to send, and that those which can be got over send whole.
[[nodiscard]] const std::string& FaultPage();

namespace fault {

// What happens in time.

bool Silent(Connection& connection);
bool Hang(Connection& connection);
bool Drip(Connection& connection);
bool Slow(Connection& connection);
bool Reset(Connection& connection);
bool CloseKept(Connection& connection);

// Lengths and chunks.

bool Truncated(Connection& connection);
bool Longer(Connection& connection);
bool TwoLengths(Connection& connection);
bool NegativeLength(Connection& connection);
bool ChunkGarbage(Connection& connection);
bool ChunkCut(Connection& connection);
bool ChunkHuge(Connection& connection);
bool Closed(Connection& connection);
bool ClosedWhole(Connection& connection);

// Compression that nobody asked for.

bool WholeGzip(Connection& connection);
bool Bomb(Connection& connection);
bool CutGzip(Connection& connection);
bool NoGzip(Connection& connection);
bool GzipLayers(Connection& connection);
bool TransferGzip(Connection& connection);

// Redirections.

/// A chain of `hops` redirections, the last of which leads to the page.
bool Chain(const ServerRequest& request, Connection& connection, int hops);
bool RedirectLoop(Connection& connection);
bool RedirectFile(Connection& connection);
bool RedirectFtp(Connection& connection);
bool RedirectData(Connection& connection);
bool RedirectGopher(Connection& connection);
bool RedirectHttps(const ServerRequest& request, Connection& connection);
bool Login(const ServerRequest& request, Connection& connection);

// Statuses.

bool Status(Connection& connection, std::string_view statusLine, std::string_view headers = "");
bool Bare(Connection& connection, std::string_view statusLine);
bool ErrorPage(Connection& connection);
bool Empty(Connection& connection);

// Too much.

bool EndlessUnknown(Connection& connection);
bool EndlessKnown(Connection& connection);
bool HeaderBomb(Connection& connection);
bool BigHeader(Connection& connection);
bool Continue2000(Connection& connection);

// Not the protocol, not the text.

bool Http09(Connection& connection);
bool Http2(Connection& connection);
bool TlsGarbage(Connection& connection);
bool NulPage(Connection& connection);
bool LongLines(Connection& connection);
bool OldLineEnds(Connection& connection);
bool ManyLines(Connection& connection);
bool ManyLinks(Connection& connection);
bool Corrected(Connection& connection);

}  // namespace fault
}  // namespace ostrova::demo
