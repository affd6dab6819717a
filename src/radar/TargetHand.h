#pragma once

#include "radar/LiveLines.h"
#include "radar/TargetDisplay.h"
#include "session/PlayerTable.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace corvane {
/// What the controller's hand does to the targets of every display but the classic one: a click selects a target or
/// acknowledges an alert, a drag moves a block or measures, and one from target to target leaves a line between them.
/// All parts are borrowed.
class TargetHand {
public:
    TargetHand(TargetDisplay& targets, const PlayerTable& players, TargetFocus& focus) noexcept
        : m_targets(targets), m_players(players), m_focus(focus)
    {
    }

    /// The left button goes down.
    void Press(ScopePoint at);
    /// What the pointer does while the button is held. A click that trembles by a few pixels is none of these.
    enum class Motion : std::uint8_t { Nothing, MovesBlock, Measures };
    Motion Move(ScopePoint at);
    /// The pixel that a measurement began from: the middle of a target that was taken hold of.
    [[nodiscard]] ScopePoint Origin() const noexcept { return m_origin; }
    void Release(ScopePoint at);
    /// The button's release was never heard.
    void Cancel() noexcept { m_held = Held::Nothing; }
    /// Gives a block that was moved by hand back its place.
    void DoubleClick(ScopePoint at);

    /// The target after the selected one in table order, of those on the scope; after the last the first.
    void SelectNext();
    /// Turns the selected target's block to a direction of the key pad; 5 gives it back its place.
    void TurnBlock(std::int32_t direction);
    /// Acknowledges the gravest alert that is not acknowledged yet.
    void AcknowledgeNext();
    /// Nothing is selected and no line stays.
    void LetGo();

    /// The member whose target or block is at a pixel; nothing where none is, or where it has left since it was drawn.
    [[nodiscard]] std::optional<MemberKey> MemberAt(ScopePoint at) const;
    [[nodiscard]] std::span<const LiveLine> Lines() const noexcept { return m_lines; }

private:
    enum class Held : std::uint8_t { Nothing, Scope, Target, Block };

    [[nodiscard]] const TargetMark* MarkAt(ScopePoint at) const;
    [[nodiscard]] std::optional<MemberKey> MemberOf(const TargetMark& mark) const;
    [[nodiscard]] const TargetMark* SelectedMark() const;
    void Join(const MemberKey& from, const MemberKey& to);

    TargetDisplay& m_targets;
    const PlayerTable& m_players;
    TargetFocus& m_focus;
    Held m_held = Held::Nothing;
    bool m_dragged = false;
    ScopePoint m_pressed;
    ScopePoint m_origin;
    ScopePoint m_blockCorner; ///< from its target, when it was taken hold of
    TrackId m_blockTrack = 0;
    std::optional<MemberKey> m_member; ///< of the target or block that is held
    std::vector<LiveLine> m_lines;
};
} // namespace corvane
