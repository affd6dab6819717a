#pragma once

#include "traffic/TrafficSource.h"
#include "traffic/feeds/FeedAircraftTable.h"
#include "traffic/feeds/LineCutter.h"

#include <cstdint>

namespace corvane {
/// Turns a stream of BaseStation text into traffic. A line counts when it arrives.
class BaseStationSource final : public TrafficSource {
public:
    void Receive(ByteSpan bytes, std::int64_t nowMs) override;
    /// The aircraft stay: whoever serves them will say them again before their minute is over.
    void Restart(std::int64_t nowMs) override;
    void Advance(std::int64_t nowMs) override { m_table.Advance(nowMs); }
    TrafficEvents TakeEvents() override { return m_table.TakeEvents(); }

    /// Lines that told something of an aircraft.
    [[nodiscard]] std::uint64_t LinesRead() const noexcept { return m_linesRead; }
    [[nodiscard]] const FeedAircraftTable& Table() const noexcept { return m_table; }

private:
    LineCutter m_cutter;
    FeedAircraftTable m_table;
    std::uint64_t m_linesRead = 0;
};
} // namespace corvane
