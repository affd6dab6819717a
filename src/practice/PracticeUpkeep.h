#pragma once

#include "practice/PracticeCrew.h"
#include "practice/PracticeOptions.h"

#include <functional>

namespace corvane {
/// What the members of a session do as such while time goes by: they come, go, rename themselves, change how they
/// send their positions, and hand over as host.
class PracticeUpkeep {
public:
    struct Door {
        std::function<bool()> IsOpen; ///< one more may join
        std::function<void()> JoinPilot;
        std::function<void()> JoinObserver;
    };
    PracticeUpkeep(PracticeCrew& crew, const PracticeOptions& options, PracticeRandom& random) noexcept
        : m_crew(crew), m_options(options), m_random(random)
    {
    }

    /// Lives one step of StepS seconds.
    void Step(const Door& door);

private:
    void LetOneGo();
    void LetHostGo();
    void ChangeObservers(const Door& door);
    void RenameOne();
    void ChangePositionsOfOne();

    PracticeCrew& m_crew;
    const PracticeOptions& m_options;
    PracticeRandom& m_random;
};
} // namespace corvane
