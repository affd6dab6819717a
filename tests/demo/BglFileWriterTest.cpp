#include "demo/BglFileWriter.h"

#include "core/BglReader.h"

#include <gtest/gtest.h>

namespace corvane {
static SceneryAirport SampleAirport()
{
    SceneryAirport airport;
    airport.Name = "Sample Field";
    airport.Icao = "KSEA";
    airport.Lat = 45;
    airport.Lon = -90;
    airport.ElevationFt = 1000;
    airport.Coms = {{ComKind::Tower, 118100, "SAMPLE TOWER"}};
    airport.Runways.push_back({45, -90, 1000, 270, 9000, 150, 27, 'R', {}});
    airport.Runways[0].Ils.push_back({"ISEA", 45, -90, 1000, false, 110300});
    airport.Ground.Points = {{GroundPointKind::Normal, -500, 250}, {GroundPointKind::HoldShort, 0, 0}};
    airport.Ground.Parkings = {{100, -100, 30.48, SpotWord::GateA, 12}};
    airport.Ground.Paths = {{GroundPathKind::Taxiway, 0, 1, 0}};
    airport.Ground.Names = {"A1"};
    return airport;
}

/// The record after the one at offset.
static std::int64_t After(BglReader& bgl, std::int64_t offset)
{
    return offset + bgl.ReadI32(offset + 4) + 8;
}

class WrittenAirport : public testing::Test {
protected:
    WrittenAirport() : m_bytes(Write()), m_bgl(m_bytes) {}

    static Bytes Write()
    {
        BglFileWriter writer;
        writer.AddAirport(SampleAirport());
        return writer.Finish();
    }
    /// Where the airport's chain of records begins.
    std::int64_t Chain() { return m_bgl.ReadI32(m_bgl.ReadI32(0x9C) + 24 + 12) + 16; }
    /// The first record with this tag in the airport's chain.
    std::int64_t Find(std::int32_t tag)
    {
        std::int64_t at = Chain();
        while (m_bgl.ReadI32(at) != tag && m_bgl.ReadI32(at) != 0)
            at = After(m_bgl, at);
        EXPECT_EQ(m_bgl.ReadI32(at), tag);
        return at;
    }

    Bytes m_bytes;
    BglReader m_bgl;
};

TEST_F(WrittenAirport, HeaderLeadsToTheDirectory)
{
    EXPECT_EQ(m_bgl.ReadI32(0x12), 0);
    EXPECT_EQ(m_bgl.ReadI32(0x4E), 0);
    EXPECT_EQ(static_cast<std::uint32_t>(m_bgl.ReadI32(0x76)), 0x87654321U);
    EXPECT_EQ(m_bgl.ReadI32(0x90), 1);
    EXPECT_EQ(m_bgl.ReadI32(0xA4), 0);
    const std::int64_t directory = m_bgl.ReadI32(0x9C);
    EXPECT_EQ(m_bgl.ReadI32(directory), 0x30001);
    EXPECT_EQ(m_bgl.ReadI32(directory + 20), 1);
    const std::int64_t entry = directory + 24;
    EXPECT_EQ(m_bgl.ReadI32(entry), 0x30002);
    EXPECT_EQ(m_bgl.ReadI32(entry + 8), 0x50001);
    EXPECT_EQ(m_bgl.ReadText(entry + 16, m_bgl.ReadI32(entry + 4) - 8), "Sample Field");
    EXPECT_EQ(After(m_bgl, entry), After(m_bgl, directory));
    EXPECT_EQ(m_bgl.ReadI32(After(m_bgl, directory)), 0);
    EXPECT_EQ(m_bgl.ReadI32(Chain() - 16), 1);
    EXPECT_EQ(m_bgl.ReadI32(Chain() - 8), 1);
    EXPECT_EQ(After(m_bgl, Chain() - 16), m_bgl.Size());
}

TEST_F(WrittenAirport, PositionNameAndTower)
{
    const std::int64_t reference = Find(0x10001);
    EXPECT_EQ(m_bgl.ReadI32(reference + 12), 5000875);
    EXPECT_EQ(m_bgl.ReadI32(reference + 20), -1073741824);
    EXPECT_EQ(m_bgl.ReadI32(reference + 28), 305); // metres
    const std::int64_t name = Find(0x10006);
    EXPECT_EQ(m_bgl.ReadText(name + 8, m_bgl.ReadI32(name + 4)), "KSEA");
    const std::int64_t com = Find(0x20001);
    EXPECT_EQ(m_bgl.ReadI32(com + 8), 0x01181000);
    EXPECT_EQ(m_bgl.ReadI32(com + 12), 6);
    EXPECT_EQ(m_bgl.ReadText(com + 16, m_bgl.ReadI32(com + 4) - 8), "SAMPLE TOWER");
}

TEST_F(WrittenAirport, RunwayAndItsIls)
{
    const std::int64_t runway = Find(0x10002);
    EXPECT_EQ(m_bgl.ReadI32(runway + 32), -1073741824); // 270 degrees
    EXPECT_EQ(m_bgl.ReadI32(runway + 40), 9000);
    EXPECT_EQ(m_bgl.ReadI32(runway + 44), 150);
    EXPECT_EQ(m_bgl.ReadI32(runway + 48), 2); // R
    EXPECT_EQ(m_bgl.ReadI32(runway + 52), 27);
    const std::int64_t ils = After(m_bgl, runway);
    EXPECT_EQ(m_bgl.ReadI32(ils), 0x10004);
    EXPECT_EQ(m_bgl.ReadI32(ils + 12), 5000875);
    EXPECT_EQ(m_bgl.ReadI32(ils + 32), -1073741824);
    EXPECT_EQ(m_bgl.ReadI32(ils + 36), 0x01103000);
    EXPECT_EQ(m_bgl.ReadI32(ils + 40), 4);
    EXPECT_EQ(m_bgl.ReadText(ils + 56, m_bgl.ReadI32(ils + 4) - 48), "ISEA");
}

TEST_F(WrittenAirport, GroundListsFollowOneAnotherNamesLast)
{
    std::int64_t at = Find(0x11001) + 8;
    const auto expectList = [&](std::int32_t count, std::int32_t size) {
        EXPECT_EQ(m_bgl.ReadI32(at), count);
        EXPECT_EQ(m_bgl.ReadI32(at + 4), size);
        at += 8;
    };
    expectList(2, 12);
    EXPECT_EQ(m_bgl.ReadI32(at), 1);
    EXPECT_EQ(m_bgl.ReadF32(at + 4), -500.0F);
    EXPECT_EQ(m_bgl.ReadF32(at + 8), 250.0F);
    at += 24;
    expectList(1, 20);
    EXPECT_EQ(m_bgl.ReadF32(at + 8), 30.48F);
    EXPECT_EQ(m_bgl.ReadI32(at + 16), 0x60C); // GATE A 12: 12 x 128 + 12
    at += 20;
    expectList(1, 32);
    EXPECT_EQ(m_bgl.ReadI32(at + 12), 0);
    EXPECT_EQ(m_bgl.ReadI32(at + 16), 1);
    at += 32;
    expectList(1, 8);
    EXPECT_EQ(m_bgl.ReadText(at, 8), "A1");
}

TEST(BglFileWriter, PutsVorsUnderTheirChannel)
{
    BglFileWriter writer;
    writer.AddVor({"SEA", "SEATTLE", 45, -90, 433, 130, 1163000, true}); // 116.30 MHz: channel 166
    writer.AddVor({"AAA", "SECOND", 45, -90, 0, 40, 1163000, false});
    const Bytes bytes = writer.Finish();
    BglReader bgl(bytes);
    const std::int64_t base = bgl.ReadI32(0x12);
    EXPECT_EQ(bgl.ReadI16(0x16), 0);
    EXPECT_EQ(bgl.ReadI16(0x18), 199);
    for (int channel = 0; channel <= 199; ++channel)
        EXPECT_EQ(bgl.ReadU8(base + 5 * channel), channel == 166 ? 1 : 0) << channel;
    const std::int64_t block = base + bgl.ReadI32(base + 5 * 166 + 1);
    EXPECT_EQ(bgl.ReadU8(block), 0x15);
    EXPECT_NE(bgl.ReadU8(block + 9), 0x15);
    const std::int64_t vor = base + bgl.ReadI32(block + 5);
    EXPECT_EQ(bgl.ReadU8(vor), 4);
    EXPECT_EQ(bgl.ReadU8(vor + 1), 118);
    EXPECT_EQ(bgl.ReadI24(vor + 5), 2500438);
    EXPECT_EQ(bgl.ReadI24(vor + 8), -4194304);
    EXPECT_EQ(bgl.ReadNavText(vor + 15, 4), "SEA");
    EXPECT_EQ(bgl.ReadNavText(vor + 20, 23), "SEATTLE");
    EXPECT_EQ(bgl.ReadU8(vor + 44), 0x20);
    EXPECT_EQ(bgl.ReadNavText(vor + 44 + 17 + 15, 4), "AAA");
    EXPECT_EQ(bgl.ReadU8(vor + 44 + 17 + 44), 0);
}

TEST(BglFileWriter, WritesNdbFrequenciesDigitByDigit)
{
    BglFileWriter writer;
    writer.AddNdb({"EA", "SEATTLE", -45, 90, 0, 25, 3505, false});
    const Bytes bytes = writer.Finish();
    BglReader bgl(bytes);
    const std::int64_t base = bgl.ReadI32(0x4E);
    const std::int64_t ndb = base + bgl.ReadI32(base + 5);
    EXPECT_EQ(bgl.ReadU8(ndb), 4);
    EXPECT_EQ(bgl.ReadU8(ndb + 1), 0x50);
    EXPECT_EQ(bgl.ReadU8(ndb + 2), 3);
    EXPECT_EQ(bgl.ReadU8(ndb + 3), 5);
    EXPECT_EQ(bgl.ReadI24(ndb + 4), -2500438);
    EXPECT_EQ(bgl.ReadI24(ndb + 7), 4194304);
    EXPECT_EQ(bgl.ReadU8(ndb + 12), 23); // 22.6
    EXPECT_EQ(bgl.ReadNavText(ndb + 13, 4), "EA");
    EXPECT_EQ(bgl.ReadNavText(ndb + 18, 23), "SEATTLE");
}

TEST(BglFileWriter, WritesABoundaryAcross180)
{
    SceneryBoundary boundary;
    boundary.Name = "FIJI FIR HIGH 1";
    boundary.Facility = "FIJI FIR";
    boundary.FrequencyKhz = 134700;
    boundary.South = -22.5;
    boundary.West = 135;
    boundary.North = -11.25;
    boundary.East = -135;
    boundary.Floor = -1;
    boundary.Ceiling = -1;
    boundary.Points = {{BoundaryKind::Start, -22.5, 135, 0}, {BoundaryKind::Circle, 0, 0, 7}};
    BglFileWriter writer;
    writer.AddBoundary(boundary);
    const Bytes bytes = writer.Finish();
    BglReader bgl(bytes);
    const std::int64_t list = bgl.ReadI32(0xA4);
    EXPECT_EQ(bgl.ReadI32(list), 1);
    EXPECT_EQ(bgl.ReadI32(list + 8), 4);
    EXPECT_EQ(bgl.ReadI32(After(bgl, list)), 0);
    const std::int64_t head = list + 16;
    EXPECT_EQ(bgl.ReadI32(head), 1);
    EXPECT_EQ(bgl.ReadI32(head + 8), 5);
    const std::int64_t name = head + 16;
    EXPECT_EQ(bgl.ReadText(name + 8, bgl.ReadI32(name + 4)), "FIJI FIR HIGH 1");
    const std::int64_t box = After(bgl, name);
    EXPECT_EQ(bgl.ReadI32(box), 0x1000B);
    EXPECT_EQ(bgl.ReadI32(box + 12), 1610612736);  // 135 east, above
    EXPECT_EQ(bgl.ReadI32(box + 20), -1610612736); // 135 west
    const std::int64_t com = After(bgl, box);
    EXPECT_EQ(bgl.ReadI32(com + 8), 0x01347000);
    const std::int64_t start = After(bgl, com);
    EXPECT_EQ(bgl.ReadI32(start), 0x12002);
    EXPECT_EQ(bgl.ReadI32(start + 24), -1);
    EXPECT_EQ(bgl.ReadI32(start + 28), -1);
    const std::int64_t circle = After(bgl, start);
    EXPECT_EQ(bgl.ReadI32(circle), 0x12008);
    EXPECT_EQ(bgl.ReadI32(circle + 8), 7);
    EXPECT_EQ(bgl.ReadI32(circle + 20), -1);
}
} // namespace corvane
