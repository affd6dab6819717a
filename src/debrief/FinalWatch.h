#pragma once

#include "core/MagVarGrid.h"
#include "debrief/Debrief.h"
#include "practice/PracticeScene.h"
#include "session/PlayerTable.h"

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <tuple>
#include <vector>

namespace corvane {
enum class WakeCategory : std::uint8_t { Light, Medium, Heavy };
/// By the title and the engine that aircraft information names.
WakeCategory WakeOf(const PlayerRecord& aircraft) noexcept;
/// Nautical miles that a follower keeps on the final behind a leader: 3, 4 heavy behind heavy, 5 medium behind heavy
/// and light behind medium, 6 light behind heavy.
double WakeDistanceNm(WakeCategory leader, WakeCategory follower) noexcept;

/// Watches who follows whom on the finals of the scene's runways, within 15 nm of the threshold. The scene and the grid
/// must outlive it.
class FinalWatch {
public:
    FinalWatch(const PracticeScene& scene, const MagVarGrid& grid) noexcept : m_scene(&scene), m_grid(&grid) {}

    /// airborne   those that may be on a final
    /// isCharged  whether a follower that comes too close now is the controller's
    void Refresh(std::span<const PlayerRecord* const> airborne, double nowS,
                 const std::function<bool(const std::string&)>& isCharged,
                 const std::function<std::string(const std::string&)>& why);
    /// An item for each pair that came too close.
    [[nodiscard]] std::vector<DebriefItem> Items() const;

private:
    struct Pair {
        double SinceS = 0;
        double LastS = 0;
        double ClosestNm = 0;
        double NeededNm = 0;
        bool Charged = false;
        std::string Why;
    };
    using Key = std::tuple<std::string, std::string, std::string>; ///< leader, follower, airport and runway

    struct OnFinal {
        const PlayerRecord* Aircraft = nullptr;
        double OutNm = 0;
    };
    [[nodiscard]] std::vector<OnFinal> Established(std::span<const PlayerRecord* const> airborne,
                                                   const PracticeAirport& airport, const PracticeRunway& runway) const;

    const PracticeScene* m_scene;
    const MagVarGrid* m_grid;
    std::map<Key, Pair> m_pairs;
};
} // namespace corvane
