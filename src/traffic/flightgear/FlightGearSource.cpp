#include "traffic/flightgear/FlightGearSource.h"

#include "core/Text.h"
#include "traffic/flightgear/Texts.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace corvane {
using flightgear::OwnPosition;
using flightgear::SentCallsign;

static constexpr std::string_view ControllersModel = "Aircraft/ATC/Models/ATC.xml";
static constexpr std::string_view PilotsModel = "Aircraft/c172p/Models/c172p.xml"; // every installation has it
static constexpr std::size_t MostShown = 1000;

FlightGearSource::FlightGearSource(FlightGearStation station) : m_station(std::move(station))
{
    assert(!m_station.Callsign.empty() && SentCallsign(m_station.Callsign) == m_station.Callsign);
}

bool FlightGearSource::IsOwn(std::string_view callsign) const
{
    return callsign == m_station.Callsign || std::any_of(m_shown.begin(), m_shown.end(), [callsign](const auto& shown) {
               return shown.second.Callsign == callsign;
           });
}

void FlightGearSource::Receive(ByteSpan datagram, std::int64_t nowMs)
{
    m_nowMs = nowMs;
    const auto packet = flightgear::DecodePosition(datagram);
    if (!packet)
        return;
    m_heardMs = nowMs;
    if (m_link != Link::Heard)
        ChangeLink(Link::Heard, m_link == Link::Beginning ? "" : m_station.Partner + " is heard now.");
    // What comes back to us: our own words, and those of the pilots that we show.
    if (!IsOwn(flightgear::ShownCallsign(packet->Callsign)))
        m_pilots.Hear(*packet, nowMs, m_events);
}

void FlightGearSource::ChangeLink(Link link, const std::string& notice)
{
    m_link = link;
    if (!notice.empty())
        m_events.emplace_back(SourceNotice{notice});
}

void FlightGearSource::Refused(std::int64_t nowMs)
{
    m_nowMs = nowMs;
    if (m_link != Link::Refused)
        ChangeLink(Link::Refused, m_station.Partner + " refuses: nobody listens there. It is tried again.");
}

void FlightGearSource::WatchLink(std::int64_t nowMs)
{
    constexpr std::int64_t SilentMs = 30000;
    if ((m_link == Link::Beginning || m_link == Link::Heard) && nowMs - m_heardMs >= SilentMs)
        ChangeLink(Link::Silent, "Nothing has been heard from " + m_station.Partner +
                                     " for 30 seconds: nobody is in range, or it does not answer.");
}

void FlightGearSource::Advance(std::int64_t nowMs)
{
    m_nowMs = nowMs;
    m_pilots.Advance(nowMs, m_events);
    WatchLink(nowMs);
    SendOwn(nowMs);
    SendShown(nowMs);
}

/// Over midnight it starts anew.
double FlightGearSource::TimeOfDayS(std::int64_t nowMs) const noexcept
{
    constexpr double SecondsPerDay = 86400;
    return std::fmod(m_station.UtcS + static_cast<double>(nowMs) / 1000, SecondsPerDay);
}

void FlightGearSource::SendOwn(std::int64_t nowMs)
{
    constexpr std::int64_t SpeakingMs = 200;
    constexpr std::int64_t QuietMs = 1000;
    constexpr std::int64_t RefusedMs = 5000;
    constexpr double AboveTheFieldFt = 50;
    if (nowMs < m_nextSendMs)
        return;
    const std::string_view chat = m_speech.TextAt(nowMs);
    std::int64_t intervalMs = m_speech.IsSpeaking() ? SpeakingMs : QuietMs;
    if (m_link == Link::Refused)
        intervalMs = RefusedMs;
    m_nextSendMs = nowMs + intervalMs;
    m_output.push_back(EncodePosition(OwnPosition{.Callsign = m_station.Callsign,
                                                  .Model = ControllersModel,
                                                  .RangeNm = m_station.RangeNm,
                                                  .TimeS = TimeOfDayS(nowMs),
                                                  .IntervalS = static_cast<double>(intervalMs) / 1000,
                                                  .Position = m_station.Position,
                                                  .AltitudeFt = m_station.ElevationFt + AboveTheFieldFt,
                                                  .Chat = chat,
                                                  .Squawk = {}}));
}

/// The session's pilots, from whom the relay need not feed us again: we ask for the least range in their names.
void FlightGearSource::SendShown(std::int64_t nowMs)
{
    constexpr std::int64_t GoneMs = 15000;
    constexpr std::int64_t RepeatMs = 2000;
    const std::int64_t oldestMs = nowMs - GoneMs;
    std::erase_if(m_shown, [oldestMs](const auto& entry) { return entry.second.ToldMs < oldestMs; });
    if (m_link == Link::Refused)
        return;
    for (auto& [name, shown] : m_shown) {
        if (!shown.IsNew && nowMs - shown.SentMs < RepeatMs)
            continue;
        shown.IsNew = false;
        shown.SentMs = nowMs;
        m_output.push_back(EncodePosition(OwnPosition{.Callsign = shown.Callsign,
                                                      .Model = PilotsModel,
                                                      .RangeNm = 1,
                                                      .TimeS = TimeOfDayS(nowMs),
                                                      .IntervalS = 1,
                                                      .Position = shown.Report.Position,
                                                      .AltitudeFt = shown.Report.AltitudeFt,
                                                      .TrueHeading = shown.Report.TrueHeading,
                                                      .GroundSpeedKt = shown.Report.GroundSpeedKt,
                                                      .Chat = {},
                                                      .Squawk = shown.Report.Squawk}));
    }
}

/// A callsign for a member's name that nobody has; a digit at its end tells apart what would be the same.
std::string FlightGearSource::FreeCallsign(std::string_view name) const
{
    constexpr char FirstDigit = '2';
    constexpr char LastDigit = '9';
    std::string callsign = SentCallsign(name);
    if (callsign.empty())
        callsign = "PILOT";
    const auto isFree = [this](const std::string& wanted) { return !IsOwn(wanted) && !m_pilots.Knows(wanted); };
    for (char digit = FirstDigit; digit <= LastDigit && !isFree(callsign); ++digit) {
        callsign.resize(std::min(SentCallsign(name).size(), flightgear::CallsignLength - 1));
        callsign += digit;
    }
    return isFree(callsign) ? callsign : std::string();
}

void FlightGearSource::Show(const MemberMoved& member)
{
    auto found = m_shown.find(member.Name);
    if (found == m_shown.end()) {
        if (m_shown.size() >= MostShown)
            return;
        std::string callsign = FreeCallsign(member.Name);
        if (callsign.empty())
            return;
        found = m_shown.emplace(member.Name, Shown()).first;
        found->second.Callsign = std::move(callsign);
    }
    found->second.Report = member.Report;
    found->second.ToldMs = m_nowMs;
    found->second.IsNew = true;
}

void FlightGearSource::Tell(const TrafficWord& word)
{
    if (const auto* line = std::get_if<LineSaid>(&word)) {
        if (!m_speech.Say(Windows1252ToUtf8(line->Text)))
            m_events.emplace_back(SourceNotice{"Too many lines wait to be said; this one is lost: " + line->Text});
        m_nextSendMs = 0;
    } else if (const auto* moved = std::get_if<MemberMoved>(&word)) {
        Show(*moved);
    } else if (const auto* left = std::get_if<MemberLeft>(&word)) {
        m_shown.erase(left->Name);
    }
}

TrafficEvents FlightGearSource::TakeEvents()
{
    return std::exchange(m_events, {});
}

std::vector<Bytes> FlightGearSource::TakeOutput()
{
    return std::exchange(m_output, {});
}
} // namespace corvane
