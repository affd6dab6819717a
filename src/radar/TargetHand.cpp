#include "radar/TargetHand.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <utility>

namespace corvane {
const TargetMark* TargetHand::MarkAt(ScopePoint at) const
{
    const TargetMark* const target = m_targets.TargetAt(at);
    return target != nullptr ? target : m_targets.BlockAt(at);
}

std::optional<MemberKey> TargetHand::MemberOf(const TargetMark& mark) const
{
    const auto players = m_players.Players();
    if (mark.Slot >= players.size() || players[mark.Slot].PlayerId != mark.PlayerId)
        return std::nullopt; // the table has changed since the marks were made
    return MemberKey{mark.PlayerId, players[mark.Slot].Name};
}

std::optional<MemberKey> TargetHand::MemberAt(ScopePoint at) const
{
    const TargetMark* const mark = MarkAt(at);
    return mark == nullptr ? std::nullopt : MemberOf(*mark);
}

const TargetMark* TargetHand::SelectedMark() const
{
    const auto& marks = m_targets.Marks().Targets;
    const auto selected = std::ranges::find_if(
        marks, [&](const TargetMark& mark) { return m_focus.Selected && MemberOf(mark) == m_focus.Selected; });
    return selected == marks.end() ? nullptr : &*selected;
}

void TargetHand::Press(ScopePoint at)
{
    m_held = Held::Nothing;
    m_dragged = false;
    m_member.reset();
    if (const auto alert = m_targets.AlertAt(at)) {
        m_targets.Monitor().Acknowledge(*alert);
        return;
    }
    m_held = Held::Scope;
    m_pressed = m_origin = at;
    const TargetMark* const mark = MarkAt(at);
    if (mark == nullptr)
        return;
    m_member = MemberOf(*mark);
    const bool isTarget = m_targets.TargetAt(at) == mark;
    m_held = isTarget ? Held::Target : Held::Block;
    if (isTarget)
        m_origin = mark->At;
    m_blockTrack = mark->Track;
    m_blockCorner = {mark->Place.Box.Left - mark->At.X, mark->Place.Box.Top - mark->At.Y};
}

TargetHand::Motion TargetHand::Move(ScopePoint at)
{
    constexpr std::int32_t TremblePx = 3;
    const ScopePoint way{at.X - m_pressed.X, at.Y - m_pressed.Y};
    if (m_held == Held::Nothing)
        return Motion::Nothing;
    m_dragged = m_dragged || std::abs(way.X) > TremblePx || std::abs(way.Y) > TremblePx;
    if (!m_dragged)
        return Motion::Nothing;
    if (m_held != Held::Block)
        return Motion::Measures;
    if (m_blockTrack != 0) // before its first report a target has no track to keep a place by
        m_targets.ByHand().Drag(m_blockTrack, {m_blockCorner.X + way.X, m_blockCorner.Y + way.Y});
    return Motion::MovesBlock;
}

void TargetHand::Release(ScopePoint at)
{
    const Held held = std::exchange(m_held, Held::Nothing);
    if (!m_member)
        return;
    if (!m_dragged)
        m_focus.Selected = m_member;
    else if (const TargetMark* const mark = m_targets.TargetAt(at); held == Held::Target && mark != nullptr)
        if (const auto to = MemberOf(*mark))
            Join(*m_member, *to);
}

void TargetHand::Join(const MemberKey& from, const MemberKey& to)
{
    constexpr std::size_t MostLines = 16;
    if (from == to)
        return;
    std::erase_if(m_lines, [&](const LiveLine& line) {
        return (line.From == from && line.To == to) || (line.From == to && line.To == from);
    });
    if (m_lines.size() == MostLines)
        m_lines.erase(m_lines.begin());
    m_lines.push_back({from, to});
}

void TargetHand::DoubleClick(ScopePoint at)
{
    if (const TargetMark* const mark = m_targets.BlockAt(at))
        m_targets.ByHand().GiveBack(mark->Track);
}

void TargetHand::SelectNext()
{
    const auto& marks = m_targets.Marks().Targets;
    if (marks.empty())
        return;
    const TargetMark* const selected = SelectedMark();
    const std::size_t next = selected == nullptr ? 0 : static_cast<std::size_t>(selected - marks.data()) + 1;
    m_focus.Selected = MemberOf(marks[next % marks.size()]);
}

void TargetHand::TurnBlock(std::int32_t direction)
{
    constexpr std::int32_t Middle = 5;
    assert(direction >= 1 && direction <= 9);
    const TargetMark* const selected = SelectedMark();
    if (selected == nullptr || selected->Track == 0)
        return;
    if (direction == Middle)
        m_targets.ByHand().GiveBack(selected->Track);
    else
        m_targets.ByHand().Point(selected->Track, direction);
}

void TargetHand::AcknowledgeNext()
{
    const auto alerts = m_targets.Monitor().Alerts();
    const auto next = std::ranges::find(alerts, false, &Alert::Acknowledged);
    if (next != alerts.end())
        m_targets.Monitor().Acknowledge(static_cast<std::size_t>(next - alerts.begin()));
}

void TargetHand::LetGo()
{
    m_held = Held::Nothing;
    m_focus.Selected.reset();
    m_lines.clear();
}
} // namespace corvane
