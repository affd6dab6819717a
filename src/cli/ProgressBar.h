#pragma once

#include <chrono>
#include <cstdint>
#include <ostream>
#include <string>

namespace corvane {
/// A line on a terminal that shows how far long work has come, its speed and the time left. Elsewhere it stays silent.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    /// unit  what is counted: "files"
    ProgressBar(std::ostream& out, bool onTerminal, std::string unit);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    /// Clears the line.
    ~ProgressBar();

    void Show(std::int64_t done, std::int64_t total, const std::string& what, Clock::time_point now = Clock::now());

private:
    std::ostream& m_out;
    bool m_onTerminal;
    std::string m_unit;
    Clock::time_point m_start;
    Clock::time_point m_lastShown;
    bool m_shown = false;
};
} // namespace corvane
