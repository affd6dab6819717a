#pragma once

#include "practice/PracticeMember.h"
#include "practice/Random.h"

#include <memory>
#include <string_view>
#include <vector>

namespace corvane {
/// The simulated members of a session, in order of joining, and which of them hosts it.
class PracticeCrew {
public:
    using List = std::vector<std::unique_ptr<PracticeMember>>;

    [[nodiscard]] const List& Members() const noexcept { return m_members; }
    /// The member that admits others; null while nobody here does.
    [[nodiscard]] PracticeMember* Host() const noexcept { return m_host; }
    PracticeMember& Add(std::unique_ptr<PracticeMember> member);
    void SetHost(PracticeMember& member) noexcept;
    void Clear() noexcept;

    /// Lets go of members that left or lost the session; while none of the rest hosts, the longest-standing pilot does.
    void RemoveLost();
    /// Seconds that the present host has been one; counted by whoever lives the time.
    double HostingS = 0;

    [[nodiscard]] int Count(bool pilots) const noexcept;
    [[nodiscard]] bool Has(PlayerId id) const noexcept;
    [[nodiscard]] bool HasName(std::string_view name) const noexcept;
    /// An admitted pilot; null when there is none.
    [[nodiscard]] PracticeMember* RandomPilot(PracticeRandom& random) const;

private:
    List m_members;
    PracticeMember* m_host = nullptr;
};
} // namespace corvane
