#include "os/InterruptWatch.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <ctime>

namespace corvane {
/// With SIGPIPE nobody reads the output any more: the write fails, and the work can end in order.
static constexpr std::array Watched{SIGINT, SIGTERM, SIGPIPE};

static sigset_t WatchedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : Watched)
        sigaddset(&signals, signal);
    return signals;
}

InterruptWatch::InterruptWatch()
{
    const sigset_t signals = WatchedSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

InterruptWatch::~InterruptWatch()
{
    // What has been asked for must not end the process now.
    const sigset_t signals = WatchedSignals();
    constexpr timespec NoWait{};
    while (sigtimedwait(&signals, nullptr, &NoWait) > 0) {
    }
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

bool InterruptWatch::Interrupted() const noexcept
{
    sigset_t pending;
    if (sigpending(&pending) != 0)
        return false;
    return std::ranges::any_of(Watched, [&pending](int signal) { return sigismember(&pending, signal) == 1; });
}
} // namespace corvane
