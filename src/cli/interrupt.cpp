#include "cli/interrupt.h"

#include "cli/failure.h"

#include <atomic>
#include <csignal>

namespace {

std::atomic<int> noted = 0;
static_assert(std::atomic<int>::is_always_lock_free);

void note(int number) { noted = number; }

}  // namespace

void cli::interrupt::install()
{
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        sigaction(number, nullptr, &before);
        if (before.sa_handler != SIG_IGN) sigaction(number, &action, nullptr);  // nohup, or a job in the background
    }
    std::signal(SIGPIPE, SIG_IGN);
}

int cli::interrupt::caughtSignal() { return noted; }

void cli::interrupt::check()
{
    if (noted != 0) throw Failure{signalled + noted, QStringLiteral("Interrupted: nothing was written")};
}
