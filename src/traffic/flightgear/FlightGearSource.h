#pragma once

#include "traffic/TrafficSource.h"
#include "traffic/flightgear/PilotList.h"
#include "traffic/flightgear/Speech.h"

#include <cstdint>
#include <map>
#include <string>

namespace corvane {
inline constexpr std::uint16_t FlightGearPort = 5000;

/// How a controller takes part in FlightGear's multiplayer traffic.
struct FlightGearStation {
    std::string Callsign; ///< 1 to 7 letters, digits, - and _
    LatLon Position;      ///< the area's centre
    double ElevationFt = 0;
    std::uint16_t RangeNm = 100; ///< from which relays are to pass traffic on
    std::string Partner;         ///< who is listened to, for notices
    double UtcS = 0;             ///< seconds since midnight at time 0 of the source's clock
};

/// FlightGear's multiplayer traffic: datagrams in, events out, and a controller's own presence the other way.
/// Packets, chat and presence are described in docs/formats/flightgear.md.
class FlightGearSource final : public TrafficSource {
public:
    explicit FlightGearSource(FlightGearStation station);

    void Receive(ByteSpan datagram, std::int64_t nowMs) override;
    /// What was sent last has been refused: nobody listens there now.
    void Refused(std::int64_t nowMs);
    void Advance(std::int64_t nowMs) override;
    void Tell(const TrafficWord& word) override;
    TrafficEvents TakeEvents() override;
    std::vector<Bytes> TakeOutput() override;
    [[nodiscard]] std::size_t PilotCount() const noexcept { return m_pilots.Count(); }

private:
    enum class Link : std::uint8_t { Beginning, Heard, Silent, Refused };
    /// A member of the session on this side, as the other one sees it.
    struct Shown {
        std::string Callsign;
        TrafficReport Report;
        std::int64_t ToldMs = 0;
        std::int64_t SentMs = 0;
        bool IsNew = true; ///< what was told has not been sent
    };

    void Show(const MemberMoved& member);
    [[nodiscard]] std::string FreeCallsign(std::string_view name) const;
    [[nodiscard]] bool IsOwn(std::string_view callsign) const;
    void SendOwn(std::int64_t nowMs);
    void SendShown(std::int64_t nowMs);
    void WatchLink(std::int64_t nowMs);
    void ChangeLink(Link link, const std::string& notice);
    [[nodiscard]] double TimeOfDayS(std::int64_t nowMs) const noexcept;

    FlightGearStation m_station;
    flightgear::PilotList m_pilots;
    flightgear::Speech m_speech;
    std::map<std::string, Shown> m_shown; ///< by name
    TrafficEvents m_events;
    std::vector<Bytes> m_output;
    Link m_link = Link::Beginning;
    std::int64_t m_nowMs = 0;
    std::int64_t m_heardMs = 0;
    std::int64_t m_nextSendMs = 0;
};
} // namespace corvane
