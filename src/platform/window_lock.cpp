#include "platform/window_lock.h"
#include "util/descriptor.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace ostrova::platform {
namespace {

// The file stays empty. Its first byte is locked by the one open window, and so is the byte at the
// place of that window's number: asking for a number is asking for the lock on its byte, which is
// right at every moment, and takes no lock that could get into another's way.
constexpr const char* FileName = "/window.lock";
constexpr off_t InstanceByte = 0;

struct flock LockOf(short type, off_t byte) {
    struct flock lock {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = byte;
    lock.l_len = 1;
    return lock;
}

bool Lock(int fd, off_t byte) {
    struct flock lock = LockOf(F_WRLCK, byte);
    return ::fcntl(fd, F_OFD_SETLK, &lock) == 0;
}

/// Asks without taking.
bool IsLocked(const std::string& runtimeFolder, off_t byte) {
    if (runtimeFolder.empty()) return false;
    const util::Descriptor file(
        ::open((runtimeFolder + FileName).c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct flock lock = LockOf(F_WRLCK, byte);
    return file.Ok() && ::fcntl(file.Get(), F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

std::int32_t RandomNumber() {
    std::uint32_t number = 0;
    if (::getrandom(&number, sizeof number, 0) != sizeof number) {
        number = static_cast<std::uint32_t>(::getpid());
    }
    number &= 0x7FFFFFFFU;
    return number == 0 ? 1 : static_cast<std::int32_t>(number);
}

class FileWindowLock final : public WindowLock {
public:
    FileWindowLock(util::Descriptor file, std::int32_t number)
        : file_(std::move(file)), number_(number) {}
    [[nodiscard]] std::int32_t Number() const override { return number_; }

private:
    util::Descriptor file_;
    std::int32_t number_;
};

LockResult Unavailable(std::string detail) {
    return {.status = LockStatus::Unavailable, .lock = nullptr, .detail = std::move(detail)};
}

}  // namespace

LockResult TakeWindowLock(const std::string& runtimeFolder) {
    if (runtimeFolder.empty()) return Unavailable("There is no runtime folder");
    constexpr int flags = O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    util::Descriptor file(::open((runtimeFolder + FileName).c_str(), flags, 0600));
    struct stat info {};
    if (!file.Ok() || ::fstat(file.Get(), &info) != 0) return Unavailable(util::SystemText(errno));
    if (!S_ISREG(info.st_mode)) return Unavailable("Not a regular file");
    if (!Lock(file.Get(), InstanceByte)) {
        if (errno != EAGAIN && errno != EACCES) return Unavailable(util::SystemText(errno));
        return {.status = LockStatus::HeldByAnother, .lock = nullptr, .detail = {}};
    }
    const std::int32_t number = RandomNumber();
    if (!Lock(file.Get(), number)) return Unavailable(util::SystemText(errno));
    return {.status = LockStatus::Taken,
            .lock = std::make_unique<FileWindowLock>(std::move(file), number),
            .detail = {}};
}

bool IsWindow(const std::string& runtimeFolder, std::int32_t number) {
    return number > 0 && IsLocked(runtimeFolder, number);
}

bool IsWindowClaimed(const std::string& runtimeFolder) {
    return IsLocked(runtimeFolder, InstanceByte);
}

}  // namespace ostrova::platform
