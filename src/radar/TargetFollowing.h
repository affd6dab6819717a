#pragma once

#include "radar/ScopeView.h"
#include "session/PlayerTable.h"
#include "tracks/Track.h"

#include <optional>
#include <utility>

namespace corvane {
/// Keeps a member in the middle of the scope.
class TargetFollowing {
public:
    /// Nobody for none.
    void Follow(std::optional<MemberKey> member) { m_member = std::move(member); }
    [[nodiscard]] const std::optional<MemberKey>& Followed() const noexcept { return m_member; }
    /// Where the view has to be centred for that now; nothing where it may stay. Whoever has left is followed no more.
    [[nodiscard]] std::optional<LatLon> NewCenter(const PlayerTable& players, const ScopeView& view);

private:
    std::optional<MemberKey> m_member;
};
} // namespace corvane
