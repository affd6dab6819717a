#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
inline constexpr std::string_view PilotRole = "player";
inline constexpr std::string_view ObserverRole = "observer";

/// A member of the session as the controller sees it.
struct PlayerRecord {
    std::string Name; ///< the member's friendly name in the session
    std::int32_t PlayerId = 0;
    std::string Role; ///< PilotRole or ObserverRole
    double Longitude = 0;
    double Latitude = 0;
    std::int32_t AltitudeFt = 0;
    double MagHeading = 0; ///< whole degrees magnetic
    std::int16_t GroundSpeedKt = 0;
    std::string AircraftType;
    std::string AircraftTitle;
    std::uint8_t FlightRules = 0; ///< 0 = VFR, 1 = IFR
    std::string DepartureIcao;
    std::string DestinationIcao;
    std::int16_t CruiseAltitude = 0;    ///< feet
    std::int32_t MinimumAltitudeFt = 0; ///< 0 = none
    bool operator==(const PlayerRecord&) const = default;
};

/// The members of the session in the order in which they came. A member is known by its name and its id together.
class PlayerTable {
public:
    void Append(std::string_view name, std::int32_t id, std::string_view role);
    void Remove(std::size_t index);
    void Empty() noexcept { m_players.clear(); }

    [[nodiscard]] std::size_t PlayerCount() const noexcept { return m_players.size(); }
    [[nodiscard]] std::span<PlayerRecord> Players() noexcept { return m_players; }
    [[nodiscard]] std::span<const PlayerRecord> Players() const noexcept { return m_players; }

private:
    std::vector<PlayerRecord> m_players;
};

/// The identity rule: whether an entry is the member with this id and current friendly name.
bool IsPlayer(const PlayerRecord& entry, std::int32_t id, std::string_view friendlyName) noexcept;

/// Whether the controller may be shown an entry as a pilot: a player that is not the controller itself.
bool EligiblePilot(const PlayerRecord& entry, std::int32_t ownPlayerId, std::string_view ownName) noexcept;
} // namespace corvane
