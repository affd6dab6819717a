#pragma once

#include "tests/builder/BglWriter.h"

namespace corvane {
/// A small scenery file with something for every decoder: two airports, two sectors, a VOR and an NDB.
inline Bytes FileWithAllKinds()
{
    const Bytes layout = LayoutList(2, 12, WordBytes({1, 0, 0, 2, 0, 0})) +
                         LayoutList(1, 32, TaxiPathElement(1, 0, 1, 0)) + LayoutList(1, 8, TaxiwayName("A"));
    const Bytes airport = ReferenceRecord(5000875, 119304647, 10) + RunwayOf({5000875, 119304647}) +
                          IlsOf(0, 0, 0, 0x01103000, "ILS") + GroundLayoutRecord(layout) +
                          ComRecord(0x01181000, 6, "Tower") + IcaoRecord("ABCD");
    BglWriter bgl;
    const std::int32_t first = bgl.AppendAirport(airport);
    const std::int32_t second = bgl.AppendAirport(airport);
    const std::int32_t directory = bgl.Append(BglWriter::Directory({{"FIRST", first}, {"SECOND", second}}));
    bgl.Append(WordBytes({0, 0}));
    const Bytes sector = Boundary(StartRecord(0, 0, 0, 9000) + ComRecord(0x01250000, 1, "CONTROL"));
    bgl.SetChains(directory, bgl.Append(BoundaryList(sector + sector) + WordBytes({0, 0})));
    const Bytes block = Bytes{0x15, 0, 0, 0, 0};
    PutI32(bgl.Content, 0x4E, bgl.Append(block + WordBytes({10}) + Bytes{0} + NavaidBytes(42, {}) + Bytes{0}));
    PutI32(bgl.Content, 0x12, bgl.Append(Bytes{1} + WordBytes({5}) + block + WordBytes({15}) + Bytes{0}));
    bgl.Append(NavaidBytes(44, {}) + Bytes{0});
    return bgl.Content;
}
} // namespace corvane
