#include "simulator/terminalline.h"

#include "simulator/pseudoterminal.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>

namespace {

constexpr int forEver = -1;
constexpr std::chrono::milliseconds streamPeriod(5);

int makeEvent()
{
    const int event = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (event < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
    return event;
}

bool mayRetry() { return errno == EAGAIN || errno == EINTR; }

}  // namespace

TerminalLine::TerminalLine(PseudoTerminal &terminal, const std::stop_token &stop)
    : line(terminal), stopToken(stop), wakeUp(makeEvent()), onStop(stop, [this] { ::eventfd_write(wakeUp.get(), 1); })
{}

short TerminalLine::wait(short events, int timeout)
{
    std::array<pollfd, 3> watched{
        {{wakeUp.get(), POLLIN, 0}, {line.editorEvents(), POLLIN, 0}, {events != 0 ? line.master() : -1, events, 0}}};
    ::poll(watched.data(), watched.size(), timeout);
    line.followEditor();
    return watched[2].revents;
}

bool TerminalLine::receive(std::string &bytes)
{
    std::array<char, 4096> buffer{};
    while (!stopped()) {
        wait(POLLIN, forEver);
        const ssize_t count = stopped() ? 0 : ::read(line.master(), buffer.data(), buffer.size());
        if (count > 0) {
            bytes.append(buffer.data(), static_cast<std::size_t>(count));
            return true;
        }
        if (count == 0 || !mayRetry()) return false;
    }
    return false;
}

bool TerminalLine::send(std::string_view bytes)
{
    line.followEditor();
    while (!bytes.empty() && line.isOpen() && !stopped()) {
        const ssize_t count = ::write(line.master(), bytes.data(), bytes.size());
        if (count >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (!mayRetry())
            return false;
        else
            wait(POLLOUT, forEver);
    }
    return !stopped();
}

bool TerminalLine::pause(std::chrono::milliseconds time)
{
    const auto end = std::chrono::steady_clock::now() + time;
    while (!stopped()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0) return true;
        wait(0, static_cast<int>(left.count()));
    }
    return false;
}

bool TerminalLine::streamUntilReceived(std::string_view filler)
{
    while (!stopped()) {
        // A full line takes no more; that nobody reads is no reason to wait for it.
        if (line.isOpen() && ::write(line.master(), filler.data(), filler.size()) < 0 && !mayRetry()) return false;
        if (wait(POLLIN, static_cast<int>(streamPeriod.count())) != 0) return !stopped();
    }
    return false;
}
