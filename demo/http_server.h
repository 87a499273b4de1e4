#pragma once

// A small HTTP server on the loopback for the demonstration site and for tests. It serves what it
// is told, byte for byte, so that it can also play a bad server.

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace ostrova::demo {

/// What a client asked for.
struct ServerRequest {
    std::string method;
    std::string target;   // path and query, as sent
    std::string headers;  // the header lines as sent
    std::string body;     // of a POST with a Content-Length of at most 1 MB
};

/// One client's connection, for answers that are not plain ones. Every call is false once the
/// client has gone or the server stops.
class Connection {
public:
    virtual ~Connection() = default;
    virtual bool Send(std::string_view bytes) = 0;
    /// Waits; false, at once, when the server stops or the client goes meanwhile.
    virtual bool Wait(int milliseconds) = 0;
    /// Closes so that the client sees a reset.
    virtual void Reset() = 0;
};

/// Writes the answer; true keeps the connection for another request. Called from one thread a
/// connection, so from several at once.
using Handler = std::function<bool(const ServerRequest&, Connection&)>;

/// Sends a plain complete answer with its Content-Length; what a handler returns.
bool SendAnswer(Connection& connection, int status, std::string_view body,
                std::string_view contentType = "text/html", std::string_view extraHeaders = "");

/// Listens from construction to destruction. Connections are kept open between requests.
class HttpServer {
public:
    /// Listens on 127.0.0.1; `port` 0 takes a free one. Check `Ok`.
    explicit HttpServer(Handler handler, int port = 0);
    /// Ends every connection and joins every thread.
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    [[nodiscard]] bool Ok() const { return listener_ >= 0; }
    [[nodiscard]] int Port() const { return port_; }
    /// "http://127.0.0.1:PORT".
    [[nodiscard]] std::string Address() const;
    /// Targets asked for so far, in order of arrival.
    [[nodiscard]] std::vector<std::string> Requests() const;
    /// How many connections were accepted so far.
    [[nodiscard]] int Connections() const { return accepted_.load(); }

private:
    class ClientConnection;
    struct Worker {
        std::thread thread;
        std::shared_ptr<std::atomic<bool>> done;
    };

    void Accept();
    void Serve(int socket);
    bool ServeOne(ClientConnection& client, std::string& buffer);
    void JoinFinished();

    Handler handler_;
    int listener_ = -1;
    int port_ = 0;
    std::atomic<bool> stopping_ = false;
    std::atomic<int> accepted_ = 0;
    mutable std::mutex mutex_;
    std::vector<std::string> requests_;
    std::vector<Worker> workers_;  // of the accepting thread
    std::thread acceptor_;
};

}  // namespace ostrova::demo
