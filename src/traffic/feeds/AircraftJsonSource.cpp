#include "traffic/feeds/AircraftJsonSource.h"

#include "core/Rounding.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr double OldestPositionS = 60;

/// A time so many seconds before another. Ages of more than a few minutes are all the same.
static std::int64_t Before(std::int64_t timeMs, double ageS) noexcept
{
    constexpr double LongAgoS = 600;
    return timeMs - RoundTo<std::int32_t>(std::min(ageS, LongAgoS) * 1000);
}

void AircraftJsonSource::Receive(ByteSpan bytes, std::int64_t nowMs)
{
    const auto file =
        DecodeAircraftJson(std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()), "file");
    if (file)
        Apply(*file, nowMs);
}

bool AircraftJsonSource::IsNews(const AircraftJson& file) const noexcept
{
    if (!m_lastNewsMs || file.NowS != m_fileTimeS)
        return true;
    return !file.NowS && file.Fingerprint != m_fingerprint;
}

/// When the file was made, by the program's clock. It is read some time after that, and its own clock tells the time
/// between two files better than the moments of reading; but it may be set meanwhile.
std::int64_t AircraftJsonSource::TimeOf(const AircraftJson& file, std::int64_t nowMs) noexcept
{
    constexpr double LastSensibleS = 1e11;
    constexpr double MostDriftMs = 2000;
    if (!file.NowS || !(std::abs(*file.NowS) < LastSensibleS))
        return nowMs;
    const double fileMs = *file.NowS * 1000;
    const auto now = static_cast<double>(nowMs);
    if (std::abs(fileMs + m_fileClockMs - now) > MostDriftMs)
        m_fileClockMs = now - fileMs;
    return static_cast<std::int64_t>(fileMs + m_fileClockMs);
}

void AircraftJsonSource::Apply(const AircraftJson& file, std::int64_t nowMs)
{
    if (!IsNews(file))
        return;
    const std::int64_t madeMs = TimeOf(file, nowMs);
    m_fileTimeS = file.NowS;
    m_fingerprint = file.Fingerprint;
    m_lastNewsMs = nowMs;
    ++m_list;
    for (const AircraftJsonEntry& entry : file.Aircraft) {
        FeedTimes times{Before(madeMs, entry.SeenS), Before(madeMs, entry.SeenPositionS), 0, m_list};
        const bool placed = entry.Report.Position && entry.SeenPositionS <= OldestPositionS;
        if (placed)
            times.LastWordMs = times.PositionMs;
        if (placed || (!entry.Report.Position && m_table.Contains(entry.Report.Address)))
            m_table.Apply(entry.Report, times);
    }
    m_table.DropUnlisted(m_list);
}
} // namespace corvane
