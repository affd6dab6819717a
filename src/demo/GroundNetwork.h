#pragma once

#include "demo/PlaneGeometry.h"
#include "demo/SceneryObjects.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
/// A ground layout while it grows: its points, paths and names, and what of the ground they take up.
class GroundNetwork {
public:
    /// A point of the layout (of its parking spots, at the end of a parking path) and where it is.
    struct Node {
        std::int32_t Index = 0;
        GroundVector At;
    };
    using NodeRun = std::vector<Node>;

    /// centerLines  of all runways, in the order of the airport's list
    explicit GroundNetwork(std::vector<GroundSegment> centerLines) : m_centerLines(std::move(centerLines)) {}

    Node AddPoint(GroundVector at, GroundPointKind kind = GroundPointKind::Normal);
    void AddTaxiway(const Node& from, const Node& to, std::int32_t name);
    void AddRunwayPath(const Node& from, const Node& to, std::size_t runway);
    void AddParking(const Node& from, const GroundParking& parking);
    std::int32_t AddName(std::string name);
    /// The next name for a taxiway: A, B, .. Z, AA, AB, .. without I, O and X, which read as figures and crossings.
    std::string NextLetters();

    /// Room for a taxiway's point beside runway: far enough from all other runways and from what is laid already.
    [[nodiscard]] bool HasRoom(GroundVector at, std::size_t runway) const;
    /// Metres from at to the nearest runway other than except, at most 10,000.
    [[nodiscard]] double RunwayClearance(GroundVector at, std::size_t except) const;
    [[nodiscard]] bool CrossesTaxiway(const GroundSegment& segment) const;
    [[nodiscard]] int RunwaysCrossed(const GroundSegment& segment, std::size_t except) const;

    /// Points that later taxiways may be linked to.
    void OfferJoints(const NodeRun& nodes) { m_joints.insert(m_joints.end(), nodes.begin(), nodes.end()); }
    /// Joins a run of points to an offered one by the shortest straight taxiway that cuts no other and at most one
    /// runway; where there is none the run stays by itself.
    void Link(const NodeRun& run);

    [[nodiscard]] const std::vector<GroundSegment>& Taxiways() const noexcept { return m_taxiways; }
    [[nodiscard]] GroundLayout TakeLayout() { return std::move(m_layout); }

private:
    GroundLayout m_layout;
    std::vector<GroundSegment> m_centerLines;
    std::vector<GroundSegment> m_taxiways; ///< and the ways into parking spots
    NodeRun m_joints;
    std::size_t m_lettersUsed = 0;
};

bool CrossesAny(const GroundSegment& segment, const std::vector<GroundSegment>& others);
} // namespace corvane
