#include "cli/interrupt.h"

#include "cli/failure.h"

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <future>
#include <thread>

namespace {

constexpr std::chrono::milliseconds pollPeriod(20);

#ifdef SIGHUP
constexpr std::array stops{SIGINT, SIGTERM, SIGHUP};
#else
constexpr std::array stops{SIGINT, SIGTERM};
#endif

std::atomic<int> noted = 0;
static_assert(std::atomic<int>::is_always_lock_free);

void note(int number)
{
    noted = number;
    std::signal(number, SIG_DFL);
}

}  // namespace

void cli::interrupt::install()
{
    for (const int number : stops)
        if (std::signal(number, note) == SIG_IGN) std::signal(number, SIG_IGN);  // nohup, or a job in the background
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

int cli::interrupt::caughtSignal() { return noted; }

void cli::interrupt::check()
{
    if (noted != 0) throw Failure{signalled + noted, QStringLiteral("Interrupted: nothing was written")};
}

QByteArray cli::interrupt::await(std::function<QByteArray()> read)
{
    std::packaged_task<QByteArray()> task(std::move(read));
    std::future<QByteArray> result = task.get_future();
    std::thread(std::move(task)).detach();
    while (result.wait_for(pollPeriod) != std::future_status::ready)
        check();
    check();
    return result.get();
}
