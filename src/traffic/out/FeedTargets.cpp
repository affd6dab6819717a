#include "traffic/out/FeedTargets.h"

#include "core/Geodesy.h"
#include "core/Rounding.h"
#include "core/Text.h"
#include "traffic/feeds/BaseStationText.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <utility>

namespace corvane {
std::string BaseStationTime()
{
    using namespace std::chrono;
    const auto now = floor<milliseconds>(system_clock::now());
    const auto today = floor<days>(now);
    const year_month_day date(today);
    const hh_mm_ss clock(now - today);
    std::array<char, 64> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04d/%02u/%02u,%02d:%02d:%02d.%03d", static_cast<int>(date.year()),
                      static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                      static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                      static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

/// What of a member's name a line can hold: its fields end at commas and are ASCII.
static std::string CallsignOf(std::string_view name)
{
    std::string callsign;
    for (const char c : name)
        if (c >= ' ' && c <= '~' && c != ',' && callsign.size() < LongestFeedCallsign)
            callsign += c;
    return std::string(TrimSpaces(callsign));
}

/// A member has no transponder address of its own, unless its name is one: it gets one of a block that is allotted to
/// no country, always the same for a name where no other target has it.
FeedAddress FeedTargets::AddressFor(std::string_view name)
{
    constexpr FeedAddress FirstFree = 0xD00000;
    constexpr FeedAddress FreeCount = 0x100000;
    constexpr std::uint32_t HashStart = 2166136261U; // FNV-1a
    constexpr std::uint32_t HashPrime = 16777619U;
    const auto own = ParseFeedAddress(name);
    std::uint32_t hash = HashStart;
    for (const char c : name)
        hash = (hash ^ static_cast<std::uint8_t>(c)) * HashPrime;
    FeedAddress address = own.value_or(FirstFree + hash % FreeCount);
    while (!m_addresses.insert(address).second)
        address = FirstFree + (address + 1) % FreeCount;
    return address;
}

FeedTargets::Target& FeedTargets::TargetOf(const PlayerRecord& player)
{
    const auto [entry, isNew] = m_targets.try_emplace(std::to_string(player.PlayerId) + ' ' + player.Name);
    if (isNew)
        entry->second.Address = AddressFor(player.Name);
    return entry->second;
}

FeedReport FeedTargets::Describe(const PlayerRecord& player, FeedAddress address) const
{
    FeedReport report{.Address = address, .Callsign = CallsignOf(player.Name)};
    report.Position = FeedPosition(player.Latitude, player.Longitude);
    report.AltitudeFt = FeedAltitude(player.AltitudeFt);
    report.GroundSpeedKt = FeedSpeed(player.GroundSpeedKt);
    report.TrackDeg = TrueFromMagnetic(m_magVar, player.MagHeading, {player.Latitude, player.Longitude});
    const TrafficDetails* const details = m_details == nullptr ? nullptr : m_details->Find(player.PlayerId);
    if (details != nullptr && details->Report) {
        report.Squawk = details->Report->Squawk;
        if (details->Report->Emergency)
            report.Emergency = true;
    }
    return report;
}

std::string FeedTargets::Due(std::span<const PlayerRecord> players, std::int64_t nowMs, std::string_view time)
{
    constexpr std::int64_t OnceMs = 1000;
    constexpr std::int64_t StandingMs = 20000;
    if (nowMs < m_nextMs)
        return {};
    m_nextMs = nowMs + OnceMs;
    ++m_round;
    const bool all = std::exchange(m_repeatAll, false);
    std::string lines;
    for (const PlayerRecord& player : players) {
        const bool placed =
            OnEarth({player.Latitude, player.Longitude}) && (player.Latitude != 0 || player.Longitude != 0);
        if (player.Role != PilotRole || !placed)
            continue;
        Target& target = TargetOf(player);
        const bool twice = target.Round == m_round; // a member that stands in the table more than once
        target.Round = m_round;
        FeedReport report = Describe(player, target.Address);
        if (twice || (!all && report == target.Said && nowMs - target.SaidMs < StandingMs))
            continue;
        lines += EncodeBaseStationLine(report, time);
        target.Said = std::move(report);
        target.SaidMs = nowMs;
    }
    ForgetGone();
    return lines;
}

void FeedTargets::ForgetGone()
{
    std::erase_if(m_targets, [this](const auto& entry) {
        if (entry.second.Round == m_round)
            return false;
        m_addresses.erase(entry.second.Address);
        return true;
    });
}
} // namespace corvane
