#pragma once

namespace corvane {
/// While one exists, an interrupt (SIGINT), a request to end (SIGTERM), a terminal that has gone (SIGHUP) or a reader
/// that has (SIGPIPE) does not end the process but is kept to be asked for. Threads started meanwhile leave the signals
/// to it too.
class InterruptWatch {
public:
    InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;
    ~InterruptWatch();

    /// Whether one has come since the watch began.
    [[nodiscard]] bool Interrupted() const noexcept;
};
} // namespace corvane
