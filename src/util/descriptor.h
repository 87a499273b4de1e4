#pragma once

// Owned file descriptors, and the system's words for its error numbers.

#include <unistd.h>

#include <string>
#include <system_error>
#include <utility>

namespace ostrova::util {

/// Closes its descriptor at the end. What `close` says is not heard: a writer that must know calls
/// `Close` itself.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    ~Descriptor() { static_cast<void>(Close()); }
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }

    [[nodiscard]] bool Ok() const { return fd_ >= 0; }
    [[nodiscard]] int Get() const { return fd_; }

    /// True unless the system reported an error, with `errno` set.
    bool Close() { return fd_ < 0 || ::close(std::exchange(fd_, -1)) == 0; }

private:
    int fd_;
};

/// One line for the user, e.g. "No space left on device".
[[nodiscard]] inline std::string SystemText(int error) {
    return std::system_category().message(error);
}

}  // namespace ostrova::util
