#include "simulator/pseudoterminal.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <stdlib.h>
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
    : master_(checked(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK), "posix_openpt")),
      location_(slavePath(master_.get()))
{
    slave_ = Descriptor(checked(::open(location_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), "open"));
    termios settings{};
    checked(::tcgetattr(slave_.get(), &settings), "tcgetattr");
    ::cfmakeraw(&settings);
    checked(::tcsetattr(slave_.get(), TCSANOW, &settings), "tcsetattr");
}
