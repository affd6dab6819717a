#pragma once

#include "traffic/TrafficEvents.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace corvane {
/// How the link of a feed is, in words: once when it goes down and once when it is back, and at any time on request.
class LinkReport {
public:
    explicit LinkReport(std::string place) : m_place(std::move(place)) {}

    [[nodiscard]] const std::string& Place() const noexcept { return m_place; }
    /// The time of what follows.
    void Now(std::int64_t nowMs) noexcept { m_nowMs = nowMs; }
    void Opened(TrafficEvents& events);
    void Failed(const std::string& why, TrafficEvents& events);
    void Heard() noexcept { m_heardMs = m_nowMs; }
    /// "PLACE, 12 aircraft, last heard 3 s ago" or "PLACE, Connection refused, 5 aircraft".
    [[nodiscard]] std::string Health(std::size_t aircraft) const;

private:
    std::string m_place;
    std::int64_t m_nowMs = 0;
    std::optional<std::int64_t> m_heardMs;
    bool m_open = false;
    bool m_told = false; ///< that it is down
    std::string m_why;   ///< it is down
};
} // namespace corvane
