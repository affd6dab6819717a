#include "traffic/flightgear/PilotList.h"

#include "traffic/flightgear/Texts.h"

#include <algorithm>
#include <utility>

namespace corvane::flightgear {
/// The code that a number stands for; nothing for what is none, or not set.
static std::optional<std::uint16_t> ToSquawk(std::int32_t number) noexcept
{
    constexpr std::int32_t Largest = 7777;
    constexpr std::int32_t LargestDigit = 7;
    if (number <= 0 || number > Largest)
        return std::nullopt;
    for (std::int32_t digits = number; digits > 0; digits /= 10)
        if (digits % 10 > LargestDigit)
            return std::nullopt;
    return static_cast<std::uint16_t>(number);
}

/// A frequency of the aviation band, which programs send in hertz or in kilohertz; nothing while nobody talks.
static std::optional<std::int32_t> ToFrequencyKhz(std::int32_t number) noexcept
{
    constexpr std::int32_t LowestKhz = 118000;
    constexpr std::int32_t HighestKhz = 137000;
    constexpr std::int32_t HertzPerKhz = 1000;
    const std::int32_t khz = number > HighestKhz ? number / HertzPerKhz : number;
    if (khz < LowestKhz || khz > HighestKhz)
        return std::nullopt;
    return khz;
}

/// A flood of callsigns costs no more than this many newcomers a second once the first are in.
bool PilotList::MayCome(std::int64_t nowMs)
{
    constexpr double NewcomersPerSecond = 200;
    constexpr double MostAtOnce = MostPilots;
    const auto passedMs = static_cast<double>(nowMs - std::exchange(m_placesAtMs, nowMs));
    m_places = std::min(MostAtOnce, m_places + passedMs / 1000 * NewcomersPerSecond);
    if (m_places < 1 || m_pilots.size() >= MostPilots)
        return false;
    m_places -= 1;
    return true;
}

PilotList::Pilot* PilotList::Admit(const std::string& name, const PositionPacket& packet, std::int64_t nowMs,
                                   TrafficEvents& events)
{
    if (!MayCome(nowMs))
        return nullptr;
    Pilot& pilot = m_pilots[name];
    pilot = {};
    pilot.Key = m_nextKey++;
    pilot.Callsign = packet.Callsign;
    pilot.Model = packet.Model;
    const std::string aircraft = AircraftOfModel(packet.Model);
    events.emplace_back(AircraftAppeared{.Key = pilot.Key,
                                         .Name = name,
                                         .ShortType = aircraft,
                                         .Title = aircraft,
                                         .IsPilot = !IsControllersModel(packet.Model)});
    return &pilot;
}

/// Whether a packet goes on with what its sender has told. Times order the packets of one sender; a clock that goes
/// back by more is a new one.
bool PilotList::IsNews(const Pilot& pilot, const PositionPacket& packet, std::int64_t nowMs)
{
    constexpr double NewClockS = 10;
    constexpr std::int64_t HoldsPlaceMs = 5000;
    constexpr int FarthestJumpNm = 50;
    const double backS = pilot.TimeS - packet.TimeS;
    if (packet.Callsign != pilot.Callsign || (backS > 0 && backS <= NewClockS))
        return false;
    if (nowMs - pilot.HeardMs >= HoldsPlaceMs)
        return true;
    const LatLon was = pilot.Report.Position;
    return packet.Model == pilot.Model && DistanceNm(was, packet.Position) <= FarthestJumpNm;
}

void PilotList::Report(Pilot& pilot, std::int64_t nowMs, TrafficEvents& events)
{
    constexpr std::int64_t IntervalMs = 950; // the next packet of ten a second makes it one
    pilot.NextReportMs = nowMs + IntervalMs;
    pilot.Unreported = false;
    events.emplace_back(AircraftMoved{pilot.Key, pilot.Report});
}

void PilotList::Note(Pilot& pilot, const PositionPacket& packet, std::int64_t nowMs, TrafficEvents& events)
{
    pilot.HeardMs = nowMs;
    pilot.TimeS = packet.TimeS;
    pilot.Report.Position = packet.Position;
    pilot.Report.AltitudeFt = packet.AltitudeFt;
    pilot.Report.TrueHeading = packet.TrueHeading;
    pilot.Report.GroundSpeedKt = packet.GroundSpeedKt;
    if (packet.Told.Squawk)
        pilot.Report.Squawk = ToSquawk(*packet.Told.Squawk);
    if (packet.Told.Ident)
        pilot.Report.Ident = *packet.Told.Ident != 0;
    if (packet.Told.Frequency)
        pilot.Report.FrequencyKhz = ToFrequencyKhz(*packet.Told.Frequency);
    pilot.Unreported = true;
    if (nowMs >= pilot.NextReportMs)
        Report(pilot, nowMs, events);
    if (!packet.Told.Chat || *packet.Told.Chat == pilot.Text)
        return;
    pilot.Text = *packet.Told.Chat;
    if (std::string line = ShownLine(pilot.Text); !line.empty())
        events.emplace_back(AircraftSaid{pilot.Key, std::move(line)});
}

void PilotList::Hear(const PositionPacket& packet, std::int64_t nowMs, TrafficEvents& events)
{
    const std::string name = ShownCallsign(packet.Callsign);
    if (name.empty())
        return;
    const auto known = m_pilots.find(name);
    Pilot* pilot = known == m_pilots.end() ? nullptr : &known->second;
    if (pilot != nullptr && !IsNews(*pilot, packet, nowMs))
        return;
    if (pilot != nullptr && pilot->Model != packet.Model) { // another aircraft, after a silence
        events.emplace_back(AircraftVanished{pilot->Key});
        m_pilots.erase(known);
        pilot = nullptr;
    }
    if (pilot == nullptr)
        pilot = Admit(name, packet, nowMs, events);
    if (pilot != nullptr)
        Note(*pilot, packet, nowMs, events);
}

void PilotList::Advance(std::int64_t nowMs, TrafficEvents& events)
{
    constexpr std::int64_t NextPacketMs = 200; // which has a newer position, if it comes
    for (auto entry = m_pilots.begin(); entry != m_pilots.end();) {
        Pilot& pilot = entry->second;
        if (pilot.Unreported && nowMs >= pilot.NextReportMs + NextPacketMs)
            Report(pilot, nowMs, events);
        if (nowMs - pilot.HeardMs < SilenceMs) {
            ++entry;
            continue;
        }
        events.emplace_back(AircraftVanished{pilot.Key});
        entry = m_pilots.erase(entry);
    }
}
} // namespace corvane::flightgear
