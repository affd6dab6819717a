#include "os/InterruptWatch.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <ctime>

namespace corvane {
/// With SIGPIPE nobody reads the output any more: the write fails, and the work can end in order. With SIGHUP the
/// terminal has gone.
static constexpr std::array Watched{SIGINT, SIGTERM, SIGHUP, SIGPIPE};

/// What the process was started to ignore, as nohup has it, stays ignored; only SIGPIPE is watched all the same.
static bool IsIgnored(int signal)
{
    struct sigaction action {};
    return signal != SIGPIPE && sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

static sigset_t WatchedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : Watched)
        if (!IsIgnored(signal))
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
    const sigset_t watched = WatchedSignals();
    return std::ranges::any_of(
        Watched, [&](int signal) { return sigismember(&watched, signal) == 1 && sigismember(&pending, signal) == 1; });
}
} // namespace corvane
