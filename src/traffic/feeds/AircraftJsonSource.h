#pragma once

#include "traffic/TrafficSource.h"
#include "traffic/feeds/AircraftJson.h"
#include "traffic/feeds/FeedAircraftTable.h"

#include <cstdint>
#include <optional>
#include <string>

namespace corvane {
/// Turns an aircraft.json that is read again and again into traffic. An aircraft is there for as long as it is in the
/// file with a position of the last minute. While the file's own time stands still it says nothing new, and its
/// aircraft grow old.
class AircraftJsonSource final : public TrafficSource {
public:
    /// A whole file. One that cannot be read changes nothing.
    void Receive(ByteSpan bytes, std::int64_t nowMs) override;
    /// The same for a file that has been decoded elsewhere.
    void Apply(const AircraftJson& file, std::int64_t nowMs);
    void Advance(std::int64_t nowMs) override { m_table.Advance(nowMs); }
    TrafficEvents TakeEvents() override { return m_table.TakeEvents(); }

    [[nodiscard]] const FeedAircraftTable& Table() const noexcept { return m_table; }
    /// When the file's own time last changed; nothing before the first file.
    [[nodiscard]] std::optional<std::int64_t> LastNewsMs() const noexcept { return m_lastNewsMs; }

private:
    bool IsNews(const AircraftJson& file) const noexcept;
    std::int64_t TimeOf(const AircraftJson& file, std::int64_t nowMs) noexcept;

    FeedAircraftTable m_table;
    std::optional<double> m_fileTimeS;
    std::size_t m_fingerprint = 0;
    double m_fileClockMs = 0; ///< what is to be added to the file's time for that of this program
    std::optional<std::int64_t> m_lastNewsMs;
    std::uint32_t m_list = 0;
};
} // namespace corvane
