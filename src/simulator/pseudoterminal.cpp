#include "simulator/pseudoterminal.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <deque>
#include <fcntl.h>
#include <mutex>
#include <stdlib.h>
#include <sys/inotify.h>
#include <system_error>
#include <termios.h>

namespace {

int checked(int result, const char *call)
{
    if (result < 0) throw std::system_error(errno, std::generic_category(), call);
    return result;
}

std::string slavePath(int master)
{
    checked(::grantpt(master), "grantpt");
    checked(::unlockpt(master), "unlockpt");
    std::array<char, 64> path{};
    if (const int error = ::ptsname_r(master, path.data(), path.size()); error != 0)
        throw std::system_error(error, std::generic_category(), "ptsname_r");
    return path.data();
}

}  // namespace

PseudoTerminal::PseudoTerminal()
    : masterEnd(checked(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK), "posix_openpt")),
      path(slavePath(masterEnd.get())), slaveEnd(checked(::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), "open")),
      openEvents(checked(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC), "inotify_init1"))
{
    checked(::inotify_add_watch(openEvents.get(), path.c_str(), IN_OPEN | IN_CLOSE), "inotify_add_watch");
    termios settings{};
    checked(::tcgetattr(slaveEnd.get(), &settings), "tcgetattr");
    ::cfmakeraw(&settings);
    checked(::tcsetattr(slaveEnd.get(), TCSANOW, &settings), "tcsetattr");
}

PseudoTerminal::~PseudoTerminal()
{
    static std::mutex mutex;
    static std::deque<Descriptor> former;
    const std::lock_guard lock(mutex);
    former.push_back(std::move(slaveEnd));
    if (former.size() > keptPaths) former.pop_front();
}

void PseudoTerminal::followEditor()
{
    std::array<char, 64 * sizeof(inotify_event)> buffer{};  // events of a watched file carry no name
    ssize_t size = 0;
    while ((size = ::read(openEvents.get(), buffer.data(), buffer.size())) > 0) {
        for (std::size_t at = 0; at < static_cast<std::size_t>(size); at += sizeof(inotify_event)) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            if ((event.mask & IN_OPEN) != 0) {
                ++openCount;
            } else if ((event.mask & IN_CLOSE) != 0) {
                openCount = std::max(0, openCount - 1);
                ::tcflush(slaveEnd.get(), TCIFLUSH);
            }
        }
    }
}
