#pragma once

#include "core/MagVarGrid.h"
#include "practice/PracticeCrew.h"
#include "practice/PracticeScenario.h"
#include "practice/TrafficMaker.h"

#include <functional>
#include <map>
#include <string>

namespace corvane {
/// Lets a scenario happen in a session: who joins when, who falls silent, declares an emergency or leaves, what the
/// host says, and the calls of pilots that wait for a word. The scene and the grid must outlive it.
class ScenarioDirector {
public:
    ScenarioDirector(PracticeScenario scenario, const PracticeScene& scene, const MagVarGrid& grid)
        : m_scenario(std::move(scenario)), m_scene(&scene), m_grid(&grid), m_joined(m_scenario.Aircraft.size(), false)
    {
    }

    using Join = std::function<void(std::string name, Pilot pilot)>;
    /// Lives one step of StepS seconds.
    void Step(PracticeCrew& crew, PracticeRandom& random, const Join& join);
    [[nodiscard]] const PracticeScenario& Scenario() const noexcept { return m_scenario; }

private:
    /// What a member of the scenario has been through.
    struct Part {
        std::size_t Aircraft = 0; ///< index in the scenario
        bool Called = false;
        bool Emergency = false;
        double WaitedS = 0; ///< since its last call, for one that waits
    };

    void LetJoin(PracticeCrew& crew, PracticeRandom& random, const Join& join);
    [[nodiscard]] Pilot PilotOf(const ScenarioAircraft& aircraft, PracticeRandom& random) const;
    void Direct(PracticeMember& member, Part& part) const;
    [[nodiscard]] std::string WeatherText() const;
    static void Call(PracticeMember& member, Part& part);

    PracticeScenario m_scenario;
    const PracticeScene* m_scene;
    const MagVarGrid* m_grid;
    std::vector<bool> m_joined;          ///< by aircraft
    std::map<std::string, Part> m_parts; ///< by callsign
    std::size_t m_hints = 0;
    double m_timeS = 0;
};
} // namespace corvane
