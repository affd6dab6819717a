#include "practice/PracticeCrew.h"

#include <algorithm>
#include <utility>

namespace corvane {
PracticeMember& PracticeCrew::Add(std::unique_ptr<PracticeMember> member)
{
    m_members.push_back(std::move(member));
    return *m_members.back();
}

void PracticeCrew::SetHost(PracticeMember& member) noexcept
{
    m_host = &member;
    HostingS = 0;
}

void PracticeCrew::Clear() noexcept
{
    m_host = nullptr;
    m_members.clear();
}

void PracticeCrew::RemoveLost()
{
    if (m_host != nullptr && m_host->IsLost())
        m_host = nullptr;
    std::erase_if(m_members, [](const auto& member) { return member->IsLost(); });
    if (m_host != nullptr)
        return;
    const auto next = std::find_if(m_members.begin(), m_members.end(),
                                   [](const auto& member) { return member->IsPilot() && member->Admitted; });
    if (next != m_members.end())
        SetHost(**next);
}

int PracticeCrew::Count(bool pilots) const noexcept
{
    return static_cast<int>(std::count_if(m_members.begin(), m_members.end(),
                                          [pilots](const auto& member) { return member->IsPilot() == pilots; }));
}

bool PracticeCrew::Has(PlayerId id) const noexcept
{
    return std::any_of(m_members.begin(), m_members.end(), [id](const auto& member) { return member->Id() == id; });
}

bool PracticeCrew::HasName(std::string_view name) const noexcept
{
    return std::any_of(m_members.begin(), m_members.end(),
                       [name](const auto& member) { return member->Name() == name; });
}

PracticeMember* PracticeCrew::RandomPilot(PracticeRandom& random) const
{
    std::vector<PracticeMember*> pilots;
    for (const auto& member : m_members)
        if (member->IsPilot() && member->Admitted && !member->IsLost())
            pilots.push_back(member.get());
    return pilots.empty() ? nullptr : pilots[random.Below(pilots.size())];
}
} // namespace corvane
