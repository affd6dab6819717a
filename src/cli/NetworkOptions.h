#pragma once

#include "cli/Commands.h"
#include "net/sockets/DirectPlayOptions.h"
#include "os/InterruptWatch.h"

#include <chrono>
#include <optional>
#include <string>

namespace corvane {
/// Adds --bind, --port and --ports, which say how a peer uses the network.
void AddPeerOptions(CLI::App& command, DirectPlayOptions& options);
/// Adds --address and --broadcast, which say where sessions are looked for.
void AddSearchOptions(CLI::App& command, DirectPlayOptions& options);
/// Adds --for.
void AddForOption(CLI::App& command, std::optional<double>& seconds);

/// When a command that runs on is to end: when it is interrupted, or after the time given.
class EndOfRun {
public:
    explicit EndOfRun(std::optional<double> seconds) noexcept : m_seconds(seconds) {}

    [[nodiscard]] std::int64_t ElapsedMs() const noexcept
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - m_start).count();
    }
    [[nodiscard]] bool HasCome() const noexcept { return TimeIsOver() || m_watch.Interrupted(); }
    [[nodiscard]] const char* Reason() const noexcept { return TimeIsOver() ? "the time is over" : "interrupted"; }

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool TimeIsOver() const noexcept
    {
        return m_seconds && static_cast<double>(ElapsedMs()) >= *m_seconds * 1000;
    }

    InterruptWatch m_watch;
    std::optional<double> m_seconds;
    Clock::time_point m_start = Clock::now();
};
} // namespace corvane
