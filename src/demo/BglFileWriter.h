#pragma once

#include "core/Bytes.h"
#include "demo/SceneryObjects.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
/// Collects the objects of one scenery file and lays them out: the header, the VOR and NDB sections of the older
/// layout, the chain of airport directories and the chain of boundary lists of the newer one. Layout: docs/formats.md.
class BglFileWriter {
public:
    void AddVor(const SceneryStation& station) { m_vors.push_back(station); }
    void AddNdb(const SceneryStation& station) { m_ndbs.push_back(station); }
    void AddAirport(const SceneryAirport& airport);
    void AddBoundary(const SceneryBoundary& boundary);
    /// The boundaries added from here on form a list of their own.
    void StartBoundaryList() { m_boundaryLists.emplace_back(); }
    /// Appends bytes that no reader looks at, such as the pictures and models that scenery files are full of.
    void AddUnreadBytes(std::size_t count, std::uint32_t seed);

    /// The bytes of the file. Sections that hold nothing are left out, their header words are 0.
    [[nodiscard]] Bytes Finish() const;

private:
    struct EncodedAirport {
        std::string Name;
        Bytes Data;
    };

    std::vector<SceneryStation> m_vors;
    std::vector<SceneryStation> m_ndbs;
    std::vector<EncodedAirport> m_airports;
    std::vector<Bytes> m_boundaryLists;
    Bytes m_unread;
};
} // namespace corvane
