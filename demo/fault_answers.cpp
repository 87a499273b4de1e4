#include "demo/fault_answers.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>

#include "demo/gzip.h"

namespace ostrova::demo {
namespace {

constexpr int ForEver = 24 * 3600 * 1000;  // ms; ends when the client has had enough
constexpr std::size_t Endless = 100'000'000;
constexpr std::size_t GiantHeader = 200'000;

std::string Length(long long length) {
    return "Content-Length: " + std::to_string(length) + "\r\n";
}

std::string Answer(std::string_view statusLine, std::string_view headers, std::string_view body) {
    std::string answer = "HTTP/1.1 ";
    return answer.append(statusLine)
        .append("\r\nContent-Type: text/html\r\n")
        .append(headers)
        .append("\r\n")
        .append(body);
}

/// A 200 with these headers and this body, and then the end of the connection.
bool SendOk(Connection& connection, std::string_view headers, std::string_view body) {
    connection.Send(Answer("200 OK", headers, body));
    return false;
}

std::string_view HalfPage() {
    return std::string_view(FaultPage()).substr(0, FaultPage().size() / 2);
}

long long PageLength() {
    return static_cast<long long>(FaultPage().size());
}

bool Pieces(Connection& connection, std::size_t size, int milliseconds) {
    std::string_view rest = FaultPage();
    bool there = connection.Send(Answer("200 OK", Length(PageLength()), ""));
    while (there && !rest.empty()) {
        there = connection.Send(rest.substr(0, size)) && connection.Wait(milliseconds);
        rest.remove_prefix(std::min(size, rest.size()));
    }
    return there;
}

bool Chunks(Connection& connection, std::string_view chunks) {
    return SendOk(connection, "Transfer-Encoding: chunked\r\n", chunks);
}

bool Compressed(Connection& connection, std::string_view body) {
    return SendOk(connection,
                  "Content-Encoding: gzip\r\n" + Length(static_cast<long long>(body.size())), body);
}

bool Redirect(Connection& connection, std::string_view where) {
    return connection.Send(Answer(
        "302 Found", std::string("Location: ").append(where).append("\r\n") + Length(0), ""));
}

/// The port that `request` came to, with its colon.
std::string PortOf(const ServerRequest& request) {
    constexpr std::string_view mark = "\r\nHost: 127.0.0.1";
    const std::size_t at = request.headers.find(mark);
    if (at == std::string::npos) return "";
    const std::size_t begin = at + mark.size();
    return request.headers.substr(begin, request.headers.find('\r', begin) - begin);
}

bool EndlessBody(Connection& connection, std::string_view headers) {
    bool there = connection.Send(Answer("200 OK", headers, ""));
    for (std::size_t sent = 0; there && sent < Endless; sent += FaultPage().size()) {
        there = connection.Send(FaultPage());
    }
    return false;
}

bool Raw(Connection& connection, std::string_view bytes) {
    connection.Send(bytes);
    return false;
}

bool Repeated(Connection& connection, std::string_view piece, int times) {
    std::string page = "<html>";
    for (int i = 0; i < times; ++i) page += piece;
    return SendAnswer(connection, 200, page);
}

}  // namespace

const std::string& FaultPage() {
    static const std::string page = [] {
        std::string text = "<html><head><title>Playlist</title></head><body><table>\n";
        for (int i = 0; i < 30; ++i) text += "<tr><td>9:30</td><td>Song</td><td>Artist</td></tr>\n";
        return text.append("</table></body></html>\n");
    }();
    return page;
}

namespace fault {

// What happens in time.

bool Silent(Connection& connection) {
    connection.Wait(ForEver);
    return false;
}

bool Hang(Connection& connection) {
    connection.Send(Answer("200 OK", Length(PageLength()), HalfPage()));
    return Silent(connection);
}

bool Drip(Connection& connection) {
    return Pieces(connection, 1, 500);
}

bool Slow(Connection& connection) {
    return Pieces(connection, 200, 100);
}

bool Reset(Connection& connection) {
    connection.Send(Answer("200 OK", Length(PageLength()), HalfPage()));
    connection.Wait(50);  // else the half page may never be read
    connection.Reset();
    return false;
}

bool CloseKept(Connection& connection) {
    SendAnswer(connection, 200, FaultPage());
    return false;
}

// Lengths and chunks.

bool Truncated(Connection& connection) {
    return SendOk(connection, Length(PageLength() * 2), FaultPage());
}

bool Longer(Connection& connection) {
    return SendOk(connection, Length(PageLength()), FaultPage() + "and more, unasked");
}

bool TwoLengths(Connection& connection) {
    return SendOk(connection, Length(PageLength()) + Length(PageLength() / 2), FaultPage());
}

bool NegativeLength(Connection& connection) {
    return SendOk(connection, Length(-1), FaultPage());
}

bool ChunkGarbage(Connection& connection) {
    return Chunks(connection, "6\r\n<html>\r\nno number\r\n");
}

bool ChunkCut(Connection& connection) {
    return Chunks(connection, "6\r\n<html>\r\nFF\r\nhalf of it");
}

bool ChunkHuge(Connection& connection) {
    return Chunks(connection, "11111111111111111\r\n<html>");
}

bool Closed(Connection& connection) {
    return SendOk(connection, "Connection: close\r\n", HalfPage());
}

bool ClosedWhole(Connection& connection) {
    return SendOk(connection, "Connection: close\r\n", FaultPage());
}

// Compression that nobody asked for.

bool WholeGzip(Connection& connection) {
    return Compressed(connection, Gzip(FaultPage()));
}

bool Bomb(Connection& connection) {
    return Compressed(connection, GzipBomb(Endless));
}

bool CutGzip(Connection& connection) {
    return Compressed(connection, std::string_view(Gzip(FaultPage())).substr(0, 200));
}

bool NoGzip(Connection& connection) {
    return Compressed(connection, FaultPage());
}

bool GzipLayers(Connection& connection) {
    std::string body = FaultPage();
    std::string coding = "Content-Encoding: gzip";
    for (int layer = 1; layer < 12; ++layer) {
        body = Gzip(body);
        coding += ", gzip";
    }
    return SendOk(connection, coding + "\r\n", Gzip(body));
}

bool TransferGzip(Connection& connection) {
    return SendOk(connection, "Transfer-Encoding: gzip\r\n", Gzip(HalfPage()));
}

// Redirections.

bool Chain(const ServerRequest& request, Connection& connection, int hops) {
    constexpr std::string_view mark = "/hop/";
    const std::size_t at = request.target.find(mark);
    if (at != std::string::npos) hops = std::atoi(request.target.c_str() + at + mark.size());
    if (hops == 0) return SendAnswer(connection, 200, FaultPage());
    return Redirect(connection, std::string(mark) + std::to_string(hops - 1));
}

bool RedirectLoop(Connection& connection) {
    return Redirect(connection, "/round-and-round");
}

bool RedirectFile(Connection& connection) {
    return Redirect(connection, "file:///etc/passwd");
}

bool RedirectFtp(Connection& connection) {
    return Redirect(connection, "ftp://127.0.0.1/vantra/");
}

bool RedirectData(Connection& connection) {
    return Redirect(connection, "data:text/html,<html></html>");
}

bool RedirectGopher(Connection& connection) {
    return Redirect(connection, "gopher://127.0.0.1/1vantra");
}

bool RedirectHttps(const ServerRequest& request, Connection& connection) {
    return Redirect(connection, "https://127.0.0.1" + PortOf(request) + request.target);
}

/// A network that wants to be paid first: its login page, on a host of its own.
bool Login(const ServerRequest& request, Connection& connection) {
    constexpr std::string_view page = "<html><body><h1>Welcome to our hotel</h1></body></html>";
    if (request.target == "/login") return SendAnswer(connection, 200, page);
    return Redirect(connection, "http://localhost" + PortOf(request) + "/login");
}

// Statuses.

bool Status(Connection& connection, std::string_view statusLine, std::string_view headers) {
    constexpr std::string_view body = "<html><body><h1>No page here</h1></body></html>";
    return connection.Send(
        Answer(statusLine, Length(static_cast<long long>(body.size())).append(headers), body));
}

bool Bare(Connection& connection, std::string_view statusLine) {
    return connection.Send(Answer(statusLine, "", ""));
}

bool ErrorPage(Connection& connection) {
    return SendAnswer(connection, 200,
                      "<html><body><h1>Sorry!</h1>\nThe page is not here.\n</body></html>\n");
}

bool Empty(Connection& connection) {
    return SendAnswer(connection, 200, "");
}

// Too much.

bool EndlessUnknown(Connection& connection) {
    return EndlessBody(connection, "");
}

bool EndlessKnown(Connection& connection) {
    return EndlessBody(connection, Length(Endless));
}

bool HeaderBomb(Connection& connection) {
    bool there = connection.Send("HTTP/1.1 200 OK\r\n");
    for (std::size_t i = 0; there && i < Endless / 40; ++i) {
        there = connection.Send("X-Bomb: 0123456789 0123456789 012345\r\n");
    }
    return false;
}

bool BigHeader(Connection& connection) {
    return SendOk(connection, "X-Big: " + std::string(GiantHeader, 'x') + "\r\n", FaultPage());
}

bool Continue2000(Connection& connection) {
    std::string words;
    for (int i = 0; i < 2000; ++i) words += "HTTP/1.1 100 Continue\r\n\r\n";
    return connection.Send(words) && SendAnswer(connection, 200, FaultPage());
}

// Not the protocol, not the text.

bool Http09(Connection& connection) {
    return Raw(connection, FaultPage());
}

bool Http2(Connection& connection) {
    return Raw(connection, std::string_view("\0\0\x06\x04\0\0\0\0\0\0\x03\0\0\0d", 15));
}

bool TlsGarbage(Connection& connection) {
    return Raw(connection, std::string_view("\x15\x03\x01\0\x02\x02\x46", 7));
}

bool NulPage(Connection& connection) {
    std::string page = FaultPage();
    for (std::size_t i = 6; i < page.size(); i += 50) page[i] = '\0';
    return SendAnswer(connection, 200, page);
}

bool LongLines(Connection& connection) {
    return SendAnswer(connection, 200,
                      "<html>" + std::string(1'000'000, 'x') + "\n" + std::string(500'000, '<') +
                          "\r" + std::string(500'000, '&') + "</html>");
}

bool OldLineEnds(Connection& connection) {
    std::string page = FaultPage();
    std::replace(page.begin(), page.end(), '\n', '\r');
    return SendAnswer(connection, 200, page);
}

bool ManyLines(Connection& connection) {
    return Repeated(connection, "-\n", 1'000'000);
}

bool ManyLinks(Connection& connection) {
    return Repeated(connection, "<a href=\"/vantra/\">a</a>\n", 100'000);
}

/// Somebody corrects the page every second.
bool Corrected(Connection& connection) {
    return SendAnswer(connection, 200,
                      FaultPage() + "<!-- " + std::to_string(std::time(nullptr)) + " -->\n");
}

}  // namespace fault
}  // namespace ostrova::demo
