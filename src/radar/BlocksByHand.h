#pragma once

#include "radar/BlockPlacer.h"
#include "tracks/Track.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace corvane {
/// The blocks that the controller has put somewhere: dragged, or given a direction. They stand there, and the others
/// make room, until they are given back.
class BlocksByHand {
public:
    /// A direction as on a key pad, without 5.
    void Point(TrackId track, std::int32_t direction) { m_places[track] = {direction, {}}; }
    /// The block's top left corner, from its target.
    void Drag(TrackId track, ScopePoint fromTarget) { m_places[track] = {std::nullopt, fromTarget}; }
    /// The block stands among the others again.
    void GiveBack(TrackId track) { m_places.erase(track); }
    void GiveAllBack() noexcept { m_places.clear(); }

    [[nodiscard]] std::optional<ManualPlace> Find(TrackId track) const
    {
        const auto found = m_places.find(track);
        return found == m_places.end() ? std::nullopt : std::optional(found->second);
    }
    /// Forgets all but the tracks of an ascending list.
    void KeepOnly(const std::vector<TrackId>& tracks)
    {
        std::erase_if(m_places, [&](const auto& entry) { return !std::ranges::binary_search(tracks, entry.first); });
    }
    [[nodiscard]] bool Empty() const noexcept { return m_places.empty(); }

private:
    std::map<TrackId, ManualPlace> m_places;
};
} // namespace corvane
