#include "core/RecordCodec.h"

#include "core/Settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
AirportRecord SampleAirport()
{
    AirportRecord airport;
    airport.Name = "Seattle";
    airport.Icao = "KSEA";
    airport.Lat = 47.5;
    airport.Lon = -122.25;
    airport.ElevationFt = 433;
    airport.TowerFreq = "119.9";
    airport.TowerName = "Tower";
    airport.Runways.resize(2);
    airport.Runways[1].Designation = "16R";
    airport.Runways[1].LengthFt = 9426;
    airport.Ils.push_back({"ISEA", 1.5, 2.5, 161, "110.3"});
    airport.TaxiPoints.push_back({2, 1, 2});
    airport.Parkings.push_back({"GATE A 12", 3, 4, 50});
    airport.TaxiPaths.push_back({1, 0, 7, "Runway 16R"});
    return airport;
}

AirspaceRecord SampleAirspace()
{
    AirspaceRecord airspace;
    airspace.ComName = "PANAMA FIR";
    airspace.Kind = HighSectorKind;
    airspace.Frequency = "124.35 Mhz";
    airspace.North = 10;
    airspace.Points = {{BoundaryKind::ArcCenter, 8.5, -79.5, 0}, {BoundaryKind::Circle, 0, 0, 20}};
    airspace.Floor = -1;
    airspace.Ceiling = -2;
    return airspace;
}

TEST(RecordCodec, WritesAnEmptyAirportAsListed)
{
    AirportRecord airport;
    airport.Name = "AB";
    Bytes bytes;
    const auto nextPosAt = EncodeAirport(bytes, airport, 1);
    // name 4, identifier 2, next 4, position 16, elevation 4, ten texts 20, five lists of 2 and their counts of 4
    ASSERT_EQ(bytes.size(), 4U + 2 + 4 + 16 + 4 + 20 + 5 * (2 + 4));
    EXPECT_EQ(nextPosAt, 6U);
    EXPECT_THAT(std::vector(bytes.begin(), bytes.begin() + 10),
                testing::ElementsAre(2, 0, 'A', 'B', 0, 0, 81, 0, 0, 0));
}

TEST(RecordCodec, StoresABlankRunwayBehindTheRunways)
{
    AirportRecord airport;
    airport.Runways.resize(2);
    airport.Runways[0].Designation = "9L";
    Bytes bytes;
    EncodeAirport(bytes, airport, 1);
    constexpr std::size_t ListAt = 2 + 2 + 4 + 16 + 4 + 20;
    constexpr std::size_t BlankRunway = 68;
    EXPECT_THAT(std::vector(bytes.begin() + ListAt, bytes.begin() + ListAt + 14),
                testing::ElementsAre(1, 0, 3, 0, 0, 0, 0, 0, 0, 0, 2, 0, '9', 'L'));
    const std::size_t countAt = ListAt + 10 + 3 * BlankRunway + 2;
    EXPECT_EQ(bytes[countAt], 2);
    EXPECT_EQ(bytes.size(), countAt + 4 + 4 * 6);
}

TEST(RecordCodec, ReadsBackWhatItWrote)
{
    Bytes bytes = {9, 9, 9};
    AirportRecord airport = SampleAirport();
    EncodeAirport(bytes, airport, 4);
    airport.NextPos = 1 + static_cast<std::int32_t>(bytes.size());
    ByteReader airports(ByteSpan(bytes).subspan(3));
    EXPECT_EQ(*DecodeAirport(airports, "f"), airport);
    const AirportHead head = ReadAirportHead(bytes, 4);
    EXPECT_EQ(head.Name, "Seattle");
    EXPECT_EQ(head.Icao, "KSEA");
    EXPECT_EQ(head.NextPos, airport.NextPos);
    EXPECT_EQ(head.Lon, -122.25);

    AirspaceRecord airspace = SampleAirspace();
    Bytes airspaceBytes;
    EncodeAirspace(airspaceBytes, airspace, 1);
    airspace.NextPos = 1 + static_cast<std::int32_t>(airspaceBytes.size());
    ByteReader airspaces(airspaceBytes);
    EXPECT_EQ(*DecodeAirspace(airspaces, "f"), airspace);

    const NavaidRecord vor{"SEATTLE", "SEA", 47.4, -122.3, "116.8", 130};
    Bytes vorBytes;
    EncodeNavaid(vorBytes, vor);
    ByteReader vors(vorBytes);
    EXPECT_EQ(*DecodeNavaid(vors, "f"), vor);
}

template <class Field> bool IsWholeOrBlank(const Field& field, const Field& whole)
{
    return field == whole || field == Field{};
}

TEST(RecordCodec, ReadsBlanksBehindEveryCut)
{
    const AirportRecord airport = SampleAirport();
    Bytes bytes;
    EncodeAirport(bytes, airport, 1);
    for (std::size_t n = 0; n < bytes.size(); ++n) {
        ByteReader reader(ByteSpan(bytes).first(n));
        const auto cut = DecodeAirport(reader, "cut.dat");
        ASSERT_TRUE(cut) << n;
        EXPECT_TRUE(reader.Failed()) << n;
        EXPECT_EQ(cut->Name, n < 2 + airport.Name.size() ? "" : airport.Name) << n;
        EXPECT_TRUE(IsWholeOrBlank(cut->Lon, airport.Lon)) << n;
        EXPECT_TRUE(IsWholeOrBlank(cut->ApproachName, airport.ApproachName)) << n;
        EXPECT_TRUE(IsWholeOrBlank(cut->Runways, airport.Runways)) << n;
        EXPECT_TRUE(IsWholeOrBlank(cut->Parkings, airport.Parkings)) << n;
        EXPECT_TRUE(cut->TaxiPaths.empty()) << n << ": its count is what the record ends with";
    }
    Bytes airspace;
    EncodeAirspace(airspace, SampleAirspace(), 1);
    for (std::size_t n = 0; n < airspace.size(); ++n) {
        ByteReader reader(ByteSpan(airspace).first(n));
        const auto decoded = DecodeAirspace(reader, "cut.dat");
        ASSERT_TRUE(decoded) << n;
        EXPECT_EQ(decoded->Ceiling, 0) << n;
    }
}

TEST(RecordCodec, TakesNoMemoryForAListThatTheBytesCannotHold)
{
    Bytes bytes;
    EncodeAirspace(bytes, AirspaceRecord{}, 1);
    const std::size_t listAt = bytes.size() - 8 - 4 - 2; // limits, the list's count, its dimensions
    bytes[listAt] = 1;
    ByteWriter(bytes).PatchI32(listAt + 2, 0x7FFFFFFF);
    ByteReader reader(bytes);
    const auto decoded = DecodeAirspace(reader, "bomb.dat");
    ASSERT_TRUE(decoded);
    EXPECT_TRUE(reader.Failed());
    EXPECT_EQ(decoded->Points.capacity(), 0U);
}

TEST(RecordCodec, SurvivesEveryDamagedByte)
{
    Bytes bytes;
    EncodeAirport(bytes, SampleAirport(), 1);
    for (std::size_t n = 0; n < bytes.size(); ++n) {
        for (const std::uint8_t damage : {std::uint8_t{0}, std::uint8_t{0x7F}, std::uint8_t{0xFF}}) {
            Bytes damaged = bytes;
            damaged[n] = damage;
            ByteReader reader(damaged);
            const auto airport = DecodeAirport(reader, "damaged.dat");
            EXPECT_TRUE(!airport || airport->Runways.size() <= 3) << n;
        }
    }
}

TEST(RecordCodec, RefusesRecordsThatNextPosCannotReach)
{
    Bytes bytes = {1};
    EXPECT_EQ(EncodeAirport(bytes, SampleAirport(), 0x7FFFFFFF - 100), std::nullopt);
    EXPECT_EQ(bytes.size(), 1U);
}

TEST(Settings, AreFortyOneBytesAndThePath)
{
    SettingsRecord settings;
    settings.FsVersion = Fs2002Version;
    settings.FsPath = "C:\\FS";
    settings.AirportCount = 1;
    settings.AirspaceCount = 2;
    settings.VorCount = 3;
    settings.NdbCount = -4;
    const Bytes bytes = EncodeSettings(settings);
    ASSERT_EQ(bytes.size(), 22U + 19 + 5);
    EXPECT_EQ(bytes[0], 19);
    EXPECT_EQ(bytes[20], '0');
    EXPECT_EQ(bytes[21], 1); // the mark
    EXPECT_EQ(bytes[23], 5);
    EXPECT_EQ(bytes[30], 1); // airports, airspaces, VORs, NDBs
    EXPECT_EQ(bytes[34], 2);
    EXPECT_EQ(bytes[38], 3);
    EXPECT_EQ(bytes[42], 0xFC);
    EXPECT_EQ(*DecodeSettings(bytes, "f"), settings);
    for (std::size_t n = 0; n < bytes.size(); ++n)
        EXPECT_FALSE(DecodeSettings(ByteSpan(bytes).first(n), "f")) << n;
}
} // namespace
} // namespace corvane
