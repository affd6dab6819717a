#include "radar/TargetFollowing.h"

#include <cstdlib>

namespace corvane {
std::optional<LatLon> TargetFollowing::NewCenter(const PlayerTable& players, const ScopeView& view)
{
    constexpr std::int32_t NoticedPx = 8; // a map that is drawn anew each second for less is work for nothing
    if (!m_member)
        return std::nullopt;
    const auto slot = players.FindPlayer(m_member->PlayerId, m_member->Name);
    if (!slot) {
        m_member.reset();
        return std::nullopt;
    }
    const PlayerRecord& player = players.Players()[*slot];
    const LatLon place{player.Latitude, player.Longitude};
    if (!OnEarth(place))
        return std::nullopt;
    const ScopePoint at = ProjectToScope(view, place);
    const bool isNear = std::abs(at.X - view.ScopeWidthPx / 2) < NoticedPx && //
                        std::abs(at.Y - view.ScopeHeightPx / 2) < NoticedPx;
    return isNear ? std::nullopt : std::optional(place);
}
} // namespace corvane
