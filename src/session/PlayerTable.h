#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
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

/// The members of the session in the order in which they came. A member is known by its name and its id together; both
/// are set when the entry is made and must not be changed through Players().
class PlayerTable {
public:
    void Append(std::string_view name, std::int32_t id, std::string_view role);
    /// Takes entries out, whose indices must ascend; those after them move down.
    void Remove(std::span<const std::size_t> indices);
    void Empty() noexcept;

    /// The first entry, in table order, that is the member with this id and current friendly name.
    [[nodiscard]] std::optional<std::size_t> FindPlayer(std::int32_t id, std::string_view friendlyName) const noexcept;
    /// The next entry that is the same member as the one at index.
    [[nodiscard]] std::optional<std::size_t> FindNextPlayer(std::size_t index) const noexcept
    {
        const std::size_t next = m_nextWithId[index];
        return next == None ? std::nullopt : FindFrom(next, m_players[index].Name);
    }
    /// Whether any entry has this id, whatever its name.
    [[nodiscard]] bool HasId(std::int32_t id) const noexcept { return m_firstWithId.contains(id); }

    [[nodiscard]] std::size_t PlayerCount() const noexcept { return m_players.size(); }
    [[nodiscard]] std::span<PlayerRecord> Players() noexcept { return m_players; }
    [[nodiscard]] std::span<const PlayerRecord> Players() const noexcept { return m_players; }

private:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    void AddToIndex(std::size_t index);
    [[nodiscard]] std::optional<std::size_t> FindFrom(std::size_t index, std::string_view friendlyName) const noexcept;

    std::vector<PlayerRecord> m_players;
    std::unordered_map<std::int32_t, std::size_t> m_firstWithId;
    std::vector<std::size_t> m_nextWithId; ///< beside m_players: the next entry of the same id, or None
};

/// The identity rule: whether an entry is the member with this id and current friendly name.
bool IsPlayer(const PlayerRecord& entry, std::int32_t id, std::string_view friendlyName) noexcept;

/// Whether the controller may be shown an entry as a pilot: a player that is not the controller itself.
bool EligiblePilot(const PlayerRecord& entry, std::int32_t ownPlayerId, std::string_view ownName) noexcept;
} // namespace corvane
