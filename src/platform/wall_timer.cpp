#include "platform/wall_timer.h"

#include <sys/epoll.h>
#include <sys/inotify.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <utility>

#include "util/path.h"

namespace ostrova::platform {

util::EpochSeconds WallSeconds() {
    // Not time(): it reads a coarser clock, which is still a tick before the moment at which a
    // timer has rung, so that a wait would seem to end a second early.
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return now.tv_sec;
}

WallTimer::WallTimer(std::string zoneFile)
    : zoneFile_(std::move(zoneFile)),
      zone_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)),
      timer_(::timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC | TFD_NONBLOCK)),
      readable_(::epoll_create1(EPOLL_CLOEXEC)) {
    WatchZone();
    for (const util::Descriptor* part : {&zone_, &timer_}) {
        epoll_event event{};
        event.events = EPOLLIN;
        if (!part->Ok() || !readable_.Ok() ||
            ::epoll_ctl(readable_.Get(), EPOLL_CTL_ADD, part->Get(), &event) != 0) {
            readable_ = util::Descriptor();
        }
    }
}

void WallTimer::WatchZone() {
    if (!zone_.Ok()) return;
    // Not through a link: where the zone is one, the link is what gets replaced.
    constexpr std::uint32_t changes =
        IN_ATTRIB | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF | IN_DONT_FOLLOW;
    int watch = ::inotify_add_watch(zone_.Get(), zoneFile_.c_str(), changes);
    if (watch < 0 && errno == ENOENT) {
        // Gone, or about to come back: the next thing that appears there is a reason to look.
        const std::string folder(util::FolderPart(zoneFile_));
        watch =
            ::inotify_add_watch(zone_.Get(), folder.c_str(), IN_CREATE | IN_MOVED_TO | IN_ONESHOT);
    }
    isZoneWatched_ = watch >= 0 || (errno != ENOSPC && errno != ENOMEM);
}

bool WallTimer::Set(util::EpochSeconds due) {
    due_ = due;
    itimerspec when{};
    // A moment that has passed rings at once; 0 would switch the timer off.
    when.it_value.tv_sec = due > 0 ? due : 1;
    const int flags = TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET;
    return readable_.Ok() && isZoneWatched_ &&
           ::timerfd_settime(timer_.Get(), flags, &when, nullptr) == 0;
}

bool WallTimer::TakeZoneChange() {
    if (!zone_.Ok()) return false;
    alignas(inotify_event) char buffer[4096];
    bool changed = false;
    while (::read(zone_.Get(), buffer, sizeof buffer) > 0) changed = true;
    if (!changed) return false;
    WatchZone();
    ::tzset();
    return true;
}

std::optional<WakeReason> WallTimer::Take() {
    if (TakeZoneChange()) return WakeReason::ClockChanged;
    std::uint64_t rings = 0;
    const bool isRead = ::read(timer_.Get(), &rings, sizeof rings) > 0;
    const bool isCancelled = !isRead && errno == ECANCELED;
    if (due_ && WallSeconds() >= *due_) {
        due_.reset();
        return WakeReason::Due;
    }
    // One that has rung before its moment was set back in the same instant.
    if (isRead || isCancelled) return WakeReason::ClockChanged;
    return std::nullopt;
}

}  // namespace ostrova::platform
