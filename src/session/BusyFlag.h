#pragma once

namespace corvane {
/// Marks a piece of work as under way for as long as it lives, so that a timer that runs on behind a message box finds
/// it so and stays away.
class BusyFlag {
public:
    explicit BusyFlag(bool& flag) noexcept : m_flag(flag) { m_flag = true; }
    ~BusyFlag() { m_flag = false; }
    BusyFlag(const BusyFlag&) = delete;
    BusyFlag& operator=(const BusyFlag&) = delete;
    BusyFlag(BusyFlag&&) = delete;
    BusyFlag& operator=(BusyFlag&&) = delete;

private:
    bool& m_flag;
};
} // namespace corvane
