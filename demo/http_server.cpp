#include "demo/http_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <utility>

namespace ostrova::demo {
namespace {

constexpr int PollMilliseconds = 50;  // how soon a stop is noticed
constexpr std::size_t LongestHeader = 64 * 1024;
constexpr std::size_t LongestBody = 1024 * 1024;

std::size_t ContentLength(const std::string& headers) {
    std::string lower = headers;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const std::size_t at = lower.find("\r\ncontent-length:");
    if (at == std::string::npos) return 0;
    return std::min<std::size_t>(std::strtoull(lower.c_str() + at + 17, nullptr, 10), LongestBody);
}

ServerRequest ParseRequest(const std::string& header) {
    ServerRequest request;
    const std::size_t lineEnd = header.find("\r\n");
    const std::string line = header.substr(0, lineEnd);
    const std::size_t first = line.find(' ');
    const std::size_t second = line.find(' ', first == std::string::npos ? first : first + 1);
    request.method = line.substr(0, first);
    if (second != std::string::npos) request.target = line.substr(first + 1, second - first - 1);
    if (lineEnd != std::string::npos) request.headers = header.substr(lineEnd);
    return request;
}

}  // namespace

class HttpServer::ClientConnection final : public Connection {
public:
    ClientConnection(int socket, const std::atomic<bool>& stopping)
        : socket_(socket), stopping_(&stopping) {}
    ~ClientConnection() override { Close(); }
    ClientConnection(const ClientConnection&) = delete;
    ClientConnection& operator=(const ClientConnection&) = delete;

    bool Send(std::string_view bytes) override {
        while (!bytes.empty()) {
            if (socket_ < 0 || *stopping_) return false;
            pollfd ready{socket_, POLLOUT, 0};
            if (::poll(&ready, 1, PollMilliseconds) == 0) continue;
            const ssize_t sent =
                ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
            if (sent < 0 && (errno == EAGAIN || errno == EINTR)) continue;
            if (sent <= 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
        return socket_ >= 0;
    }

    bool Wait(int milliseconds) override {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
        while (std::chrono::steady_clock::now() < end) {
            if (socket_ < 0 || *stopping_) return false;
            pollfd gone{socket_, POLLRDHUP, 0};
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                end - std::chrono::steady_clock::now());
            const int span = std::clamp(static_cast<int>(left.count()), 1, PollMilliseconds);
            if (::poll(&gone, 1, span) > 0) return false;
        }
        return !*stopping_;
    }

    void Reset() override {
        const linger hard{1, 0};
        ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
        Close();
    }

    /// Appends what arrives to `buffer`; false when nothing more will.
    bool Receive(std::string& buffer) {
        while (socket_ >= 0 && !*stopping_) {
            pollfd ready{socket_, POLLIN, 0};
            if (::poll(&ready, 1, PollMilliseconds) <= 0) continue;
            char piece[8192];
            const ssize_t count = ::recv(socket_, piece, sizeof piece, 0);
            if (count <= 0) return false;
            buffer.append(piece, static_cast<std::size_t>(count));
            return true;
        }
        return false;
    }

private:
    void Close() {
        if (socket_ >= 0) ::close(std::exchange(socket_, -1));
    }

    int socket_;
    const std::atomic<bool>* stopping_;
};

bool SendAnswer(Connection& connection, int status, std::string_view body,
                std::string_view contentType, std::string_view extraHeaders) {
    std::string answer = "HTTP/1.1 " + std::to_string(status) + (status == 200 ? " OK" : " No") +
                         "\r\nContent-Type: " + std::string(contentType) +
                         "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" +
                         std::string(extraHeaders) + "\r\n";
    answer.append(body);
    return connection.Send(answer);
}

HttpServer::HttpServer(Handler handler, int port) : handler_(std::move(handler)) {
    listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int yes = 1;
    ::setsockopt(listener_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listener_, generic, sizeof address) != 0 || ::listen(listener_, 64) != 0 ||
        ::getsockname(listener_, generic, &length) != 0) {
        ::close(std::exchange(listener_, -1));
        return;
    }
    port_ = ntohs(address.sin_port);
    acceptor_ = std::thread([this] { Accept(); });
}

HttpServer::~HttpServer() {
    stopping_ = true;
    if (acceptor_.joinable()) acceptor_.join();
    if (listener_ >= 0) ::close(listener_);
}

std::string HttpServer::Address() const {
    return "http://127.0.0.1:" + std::to_string(port_);
}

std::vector<std::string> HttpServer::Requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void HttpServer::JoinFinished() {
    std::erase_if(workers_, [](Worker& worker) {
        if (!*worker.done) return false;
        worker.thread.join();
        return true;
    });
}

void HttpServer::Accept() {
    while (!stopping_) {
        pollfd ready{listener_, POLLIN, 0};
        if (::poll(&ready, 1, PollMilliseconds) <= 0) continue;
        const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) continue;
        ++accepted_;
        JoinFinished();
        auto done = std::make_shared<std::atomic<bool>>(false);
        workers_.push_back({std::thread([this, socket, done] {
                                Serve(socket);
                                *done = true;
                            }),
                            done});
    }
    for (Worker& worker : workers_) worker.thread.join();
}

void HttpServer::Serve(int socket) {
    const int yes = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    ClientConnection client(socket, stopping_);
    std::string buffer;
    while (ServeOne(client, buffer)) {
    }
}

bool HttpServer::ServeOne(ClientConnection& client, std::string& buffer) {
    std::size_t headerEnd = 0;
    while ((headerEnd = buffer.find("\r\n\r\n")) == std::string::npos) {
        if (buffer.size() > LongestHeader || !client.Receive(buffer)) return false;
    }
    ServerRequest request = ParseRequest(buffer.substr(0, headerEnd));
    buffer.erase(0, headerEnd + 4);
    const std::size_t length = ContentLength(request.headers);
    while (buffer.size() < length) {
        if (!client.Receive(buffer)) return false;
    }
    request.body = buffer.substr(0, length);
    buffer.erase(0, length);
    {
        const std::lock_guard lock(mutex_);
        requests_.push_back(request.target);
    }
    return handler_(request, client);
}

}  // namespace ostrova::demo
