#include "builder/AirspaceDecoder.h"

#include "builder/BglScanner.h"
#include "builder/EncodedRecords.h"
#include "tests/builder/BglWriter.h"
#include "tests/builder/HexBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
using testing::ElementsAre;

// South 48, west 10, north 50, east 14 degrees to the nearest unit.
const Bytes Box = BglRecord(0x1000B, 24, {{8, 5334267}, {12, 119304647}, {16, 5556528}, {20, 167026506}});

TEST(AirspaceDecoder, WritesASectorByteForByte)
{
    const Bytes records = StartRecord(5334267, 119304647, -1, -1) + BglRecord(0x12003, 8, {}) +
                          BglRecord(0x12008, 24, {{8, 25}, {16, -1}, {20, -2}}) +
                          BglRecord(0x10006, 8, {}, BytesOf("UPPER")) + Box + ComRecord(0x01243500, 1, "Old Control") +
                          ComRecord(0x01250000, 1, "Control");
    EncodedRecords encoded;
    ASSERT_TRUE(ScanBgl(BoundaryFile(Boundary(records)), {}, encoded));
    // The diagonal is 197.92 nm long on course 125.79, rounded up to 126; the centre lies 99 nm along it.
    const Bytes expected = HexBytes("'Control' 'ARTCC/FIR (HIGH)' b5000000 'UPPER' '125 Mhz'"
                                    "c47762d68b814840 a72215c616122840" // 49.01208 N, 12.03533 E
                                    "0000000000004940 0000000000004840 0000000000002440 0000000000002c40"
                                    "0100 03000000 00000000"
                                    "00 0000000000004840 0000000000002440 00000000"
                                    "02 0000000000000000 0000000000000000 19000000"
                                    "00 0000000000000000 0000000000000000 00000000"
                                    "02000000 ffffffff feffffff");
    EXPECT_EQ(encoded.Airspaces, expected);
}

TEST(AirspaceDecoder, GivesEveryVertexTagItsKind)
{
    const Bytes records = VertexRecord(0x12001, 0, 0) + StartRecord(0, 0, 1, 9000) + VertexRecord(0x12005, 5000875, 0) +
                          VertexRecord(0x12006, 0, 1073741824) + VertexRecord(0x12007, -5000875, 0);
    RecordList list;
    ASSERT_TRUE(ScanBgl(BoundaryFile(Boundary(records)), {}, list));
    using Kind = BoundaryKind;
    EXPECT_THAT(list.Airspaces.at(0).Points,
                ElementsAre(BoundaryPoint{Kind::ArcCenter, 0, 0, 0}, BoundaryPoint{Kind::Start, 0, 0, 0},
                            BoundaryPoint{Kind::Line, 45, 0, 0}, BoundaryPoint{Kind::ClockwiseArc, 0, 90, 0},
                            BoundaryPoint{Kind::CounterClockwiseArc, -45, 0, 0}));
    EXPECT_EQ(list.Airspaces[0].North, 0); // no box
}

struct KindCase {
    const char* Name;
    const char* Frequency;
    const char* ComName;
    std::int32_t Floor, Ceiling;
    const char* Kind;
};
class AirspaceKinds : public testing::TestWithParam<KindCase> {};
TEST_P(AirspaceKinds, FollowFacilityAndLimits)
{
    AirspaceRecord airspace;
    airspace.Frequency = GetParam().Frequency;
    airspace.ComName = GetParam().ComName;
    airspace.Floor = GetParam().Floor;
    airspace.Ceiling = GetParam().Ceiling;
    EXPECT_STREQ(AirspaceKind(airspace), GetParam().Kind);
}
INSTANTIATE_TEST_SUITE_P(Builder, AirspaceKinds,
                         testing::Values(KindCase{"High", "1 Mhz", "X", -1, -1, "ARTCC/FIR (HIGH)"},
                                         KindCase{"CeilingNotNegative", "1 Mhz", "X", -1, 0, "ARTCC/FIR (LOW)"},
                                         KindCase{"FloorNotNegative", "1 Mhz", "X", 0, -1, "ARTCC/FIR (LOW)"},
                                         KindCase{"NameWithoutFrequency", "", "X", -1, -1, "Airspace Class D"},
                                         KindCase{"FrequencyWithoutName", "1 Mhz", "", 0, 3000, "Airspace Class C"},
                                         KindCase{"B", "", "", 1000, 5000, "Airspace Class B"},
                                         KindCase{"JustB", "", "", 4001, 0, "Airspace Class B"},
                                         KindCase{"HighestC", "", "", 4000, 4000, "Airspace Class C"},
                                         KindCase{"LowestC", "", "", 0, 2501, "Airspace Class C"},
                                         KindCase{"HighestD", "", "", 2500, 2500, "Airspace Class D"}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(AirspaceDecoder, AbandonsABrokenBoundaryAlone)
{
    const auto named = [](std::string_view name) { return BglRecord(0x10006, 8, {}, BytesOf(name)); };
    const Bytes classB = StartRecord(0, 0, 0, 9000);
    const Bytes list = Boundary(classB + named("BEFORE")) + Boundary(classB + ComRecord(0x0A, 1, "not BCD")) +
                       Boundary(classB + WordBytes({0x10006, 100000})) + BglRecord(1, 16, {{8, 6}}, classB) +
                       BglRecord(0x30001, 8, {}) + Boundary(StartRecord(0, 0, 0, 3000) + named("CLASS C")) +
                       Boundary(classB + named("AFTER")) + BglRecord(2, 8, {}) + Boundary(classB + named("ENDED"));
    RecordList records;
    ASSERT_TRUE(ScanBgl(BoundaryFile(list), {}, records));
    std::vector<std::string> names;
    for (const AirspaceRecord& airspace : records.Airspaces)
        names.push_back(airspace.Name);
    EXPECT_THAT(names, ElementsAre("BEFORE", "AFTER"));
}
} // namespace
} // namespace corvane
