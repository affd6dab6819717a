#include "platform/InterruptWatch.h"

#include <csignal>
#include <ctime>

namespace corvane {
static sigset_t WatchedSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
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
    return sigpending(&pending) == 0 && (sigismember(&pending, SIGINT) == 1 || sigismember(&pending, SIGTERM) == 1);
}
} // namespace corvane
