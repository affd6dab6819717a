#pragma once

#include "tracks/ClosestApproach.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace corvane {
struct ConflictPair {
    std::uint32_t First = 0; ///< indices of the movers, First below Second
    std::uint32_t Second = 0;
    Conflict What;
};

/// Finds the pairs that are in conflict, in ascending order.
///
/// The sky is cut into bands of latitude; in each, the boxes that the targets sweep are met in the order of their
/// western edges, so only pairs that come near one another are looked at. A crowd in which everybody is near everybody
/// is given up after PairsPerMover pairs or ConflictsPerMover conflicts for each mover, so that no session of hostile
/// members can stop the scope.
class ConflictSearch {
public:
    static constexpr std::size_t PairsPerMover = 512;
    static constexpr std::size_t ConflictsPerMover = 32;

    /// movers  positions on earth. The result is valid until the next call.
    std::span<const ConflictPair> Find(std::span<const Mover> movers, const AlertOptions& options);

private:
    /// What a target sweeps, widened so that two that come into conflict overlap in all three.
    struct Box {
        double West = 0; ///< degrees, -180 .. 180; East may lie beyond 180
        double East = 0;
        double South = 0; ///< degrees
        double North = 0;
        double Bottom = 0; ///< feet
        double Top = 0;
        std::uint32_t FirstBand = 0;
        std::uint32_t LastBand = 0;
    };
    struct BandEntry {
        std::uint32_t Band = 0;
        double West = 0;
        std::uint32_t Mover = 0;
    };

    void MakeBoxes(std::span<const Mover> movers, const AlertOptions& options);
    void FillBands(const AlertOptions& options);
    void SearchBand(std::span<const Mover> movers, const AlertOptions& options, std::span<const BandEntry> band);
    bool Meet(std::span<const Mover> movers, const AlertOptions& options, const BandEntry& one, const BandEntry& other);

    std::vector<Box> m_boxes;
    std::vector<BandEntry> m_entries;
    std::vector<ConflictPair> m_found;
    std::size_t m_pairsLeft = 0;
};
} // namespace corvane
