#pragma once

#include "traffic/TrafficEvents.h"
#include "traffic/flightgear/Packet.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace corvane::flightgear {
/// The pilots that are heard: packets become events. A callsign stands for one person; a second one who uses it at
/// another place, in another aircraft or with other spaces around it is not heard until the first has been silent.
/// Positions are told once a second, what is said at once.
class PilotList {
public:
    static constexpr std::size_t MostPilots = 5000;  ///< newcomers are refused while so many are there
    static constexpr std::int64_t SilenceMs = 10000; ///< who says nothing for so long has gone

    void Hear(const PositionPacket& packet, std::int64_t nowMs, TrafficEvents& events);
    /// Tells what is due, and who has gone.
    void Advance(std::int64_t nowMs, TrafficEvents& events);
    [[nodiscard]] std::size_t Count() const noexcept { return m_pilots.size(); }
    [[nodiscard]] bool Knows(const std::string& callsign) const { return m_pilots.contains(callsign); }

private:
    struct Pilot {
        TrafficKey Key = 0;
        std::string Callsign; ///< as sent
        std::string Model;    ///< as sent
        double TimeS = 0;
        std::int64_t HeardMs = 0;
        std::int64_t NextReportMs = 0;
        bool Unreported = false;
        TrafficReport Report;
        std::string Text; ///< the last one, as sent
    };

    Pilot* Admit(const std::string& name, const PositionPacket& packet, std::int64_t nowMs, TrafficEvents& events);
    [[nodiscard]] static bool IsNews(const Pilot& pilot, const PositionPacket& packet, std::int64_t nowMs);
    static void Note(Pilot& pilot, const PositionPacket& packet, std::int64_t nowMs, TrafficEvents& events);
    static void Report(Pilot& pilot, std::int64_t nowMs, TrafficEvents& events);
    bool MayCome(std::int64_t nowMs);

    std::unordered_map<std::string, Pilot> m_pilots; ///< by shown callsign
    TrafficKey m_nextKey = 1;
    double m_places = MostPilots; ///< newcomers that may be admitted now
    std::int64_t m_placesAtMs = 0;
};
} // namespace corvane::flightgear
