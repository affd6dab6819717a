#include "tests/traffic/FlightGearData.h"
#include "traffic/flightgear/Packet.h"

#include <bit>
#include <cmath>

namespace corvane::flightgear {
namespace {
using test::SamplePilot;

class FlightGearCapture : public testing::TestWithParam<const char*> {};

/// The figures that the simulator gave of itself beside each packet.
TEST_P(FlightGearCapture, AgreesWithTheSimulator)
{
    for (const test::CapturedPacket& captured : test::ReadCapture(GetParam())) {
        const auto packet = DecodePosition(captured.Datagram);
        ASSERT_TRUE(packet);
        EXPECT_NEAR(packet->Position.Lat, captured.Figure("lat"), 1e-6);
        EXPECT_NEAR(packet->Position.Lon, captured.Figure("lon"), 1e-6);
        EXPECT_NEAR(packet->AltitudeFt, captured.Figure("altft"), 1);
        EXPECT_LT(std::abs(std::remainder(packet->TrueHeading - captured.Figure("hdg"), 360)), 0.5);
        const bool ufo = packet->Model.find("ufo") != std::string::npos;
        const bool level = std::abs(captured.Figure("vsfps")) < 1 && std::abs(captured.Figure("pitch")) < 0.1;
        if (!ufo || level) { // the other one sends its speed as if it went straight ahead
            EXPECT_NEAR(packet->GroundSpeedKt, captured.Figure("gs"), 1);
        }
        EXPECT_EQ(packet->Told.Squawk.value_or(0), std::lround(captured.Figure("squawk")));
        EXPECT_EQ(packet->Told.Ident.value_or(0), std::lround(captured.Figure("ident")));
        const std::string& chat = captured.Truth.at("chat");
        if (packet->Told.Chat) {
            EXPECT_EQ(*packet->Told.Chat, chat);
        } else { // too long for its packets
            EXPECT_GT(chat.size(), 200U);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(FlightGear, FlightGearCapture,
                         testing::Values("ufo-v2", "ufo-v1", "c172p-taxi-v2", "c172p-takeoff-v2"), [](const auto& row) {
                             std::string name(row.param);
                             std::erase(name, '-');
                             return name;
                         });

/// Behind any cut the packet says another size than it has; made to say the right one, it may end in its properties.
TEST(FlightGearPacket, IsReadAsFarAsItGoesWhereverItIsCut)
{
    for (const char* capture : {"ufo-v1", "c172p-takeoff-v2"}) {
        const Bytes whole = test::ReadCapture(capture).front().Datagram;
        for (std::size_t size = 0; size < whole.size(); ++size) {
            Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_FALSE(DecodePosition(cut)) << size;
            if (size < 16)
                continue;
            for (std::size_t i = 0; i < 4; ++i)
                cut[12 + i] = static_cast<std::uint8_t>(size >> (8 * (3 - i)));
            EXPECT_EQ(DecodePosition(cut).has_value(), size >= 232) << size;
        }
    }
}

struct SpoiltCase {
    const char* Name;
    std::size_t At;
    Bytes Put;
};

class SpoiltPacket : public testing::TestWithParam<SpoiltCase> {};

TEST_P(SpoiltPacket, IsDropped)
{
    Bytes packet = EncodePosition(SamplePilot("TEST01", 100));
    ASSERT_TRUE(DecodePosition(packet));
    std::copy(GetParam().Put.begin(), GetParam().Put.end(),
              packet.begin() + static_cast<std::ptrdiff_t>(GetParam().At));
    EXPECT_FALSE(DecodePosition(packet));
}

const Bytes NaN64{0x7F, 0xF8, 0, 0, 0, 0, 0, 1};
const Bytes Infinity32{0xFF, 0x80, 0, 0};

INSTANTIATE_TEST_SUITE_P(
    FlightGear, SpoiltPacket,
    testing::Values(SpoiltCase{"BetweenServers", 0, {'S', 'F', 'G', 'F'}}, SpoiltCase{"OtherVersion", 4, {0, 1, 0, 2}},
                    SpoiltCase{"OldChat", 8, {0, 0, 0, 1}}, SpoiltCase{"LongerThanItIs", 12, {0, 0, 4, 0}},
                    SpoiltCase{"NoCallsign", 24, {0}}, SpoiltCase{"TimeNotANumber", 136 - 8, NaN64},
                    SpoiltCase{"LagNotANumber", 136, NaN64}, SpoiltCase{"PlaceNotANumber", 152, NaN64},
                    SpoiltCase{"AttitudeInfinite", 168, Infinity32}, SpoiltCase{"VelocityInfinite", 180, Infinity32},
                    SpoiltCase{"TurningInfinite", 200, Infinity32},
                    SpoiltCase{"InTheMiddleOfTheEarth", 144, Bytes(24, 0)},
                    SpoiltCase{"FarOutInSpace", 144, {0x7F, 0xEF, 0xFF, 0xFF}},
                    SpoiltCase{"FasterThanAnything", 180, {0x7F, 0x7F, 0xFF, 0xFF}}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(FlightGearPacket, LargerThanAnybodySendsIsDropped)
{
    Bytes packet = EncodePosition(SamplePilot("TEST01", 100));
    packet.resize(LargestPacket + 1);
    packet[14] = 0x04;
    packet[15] = 0xB1;
    EXPECT_FALSE(DecodePosition(packet));
}

struct PlaceCase {
    const char* Name;
    LatLon Position;
    double AltitudeFt;
    double TrueHeading;
};

class FlightGearPlace : public testing::TestWithParam<PlaceCase> {};

TEST_P(FlightGearPlace, SurvivesTheEarthCentredFrame)
{
    OwnPosition own = SamplePilot("TEST01", 100);
    own.Position = GetParam().Position;
    own.AltitudeFt = GetParam().AltitudeFt;
    own.TrueHeading = GetParam().TrueHeading;
    const auto packet = DecodePosition(EncodePosition(own));
    ASSERT_TRUE(packet);
    EXPECT_NEAR(packet->Position.Lat, own.Position.Lat, 1e-9);
    EXPECT_NEAR(std::remainder(packet->Position.Lon - own.Position.Lon, 360), 0, 1e-9);
    EXPECT_NEAR(packet->AltitudeFt, own.AltitudeFt, 1e-4);
    EXPECT_NEAR(std::remainder(packet->TrueHeading - own.TrueHeading, 360), 0, 1e-3);
    EXPECT_NEAR(packet->GroundSpeedKt, own.GroundSpeedKt, 1e-3);
    EXPECT_EQ(packet->Told.Squawk, 21);
    EXPECT_EQ(packet->Told.Chat, "");
}

INSTANTIATE_TEST_SUITE_P(
    FlightGear, FlightGearPlace,
    testing::Values(PlaceCase{"Seattle", {47.45, -122.31}, 433, 163}, PlaceCase{"Equator", {0, 0}, 0, 0},
                    PlaceCase{"DateLine", {-17.7, 180}, 60, 359}, PlaceCase{"NearNorthPole", {89.9999, 33}, 9000, 90},
                    PlaceCase{"SouthPole", {-90, 0}, 9301, 45}, PlaceCase{"BelowTheSea", {31.5, 35.5}, -1400, 270},
                    PlaceCase{"InSpace", {51, 60}, 199000, 180}),
    [](const auto& row) { return std::string(row.param.Name); });

/// The packet of a ufo that is parked at Hilo, as far as the properties.
TEST(FlightGearPacket, IsLaidOutAsTheSimulatorSendsIt)
{
    const Bytes packet = EncodePosition({.Callsign = "KSEA_TW",
                                         .Model = "Aircraft/ATC/Models/ATC.xml",
                                         .RangeNm = 300,
                                         .TimeS = 30628.22282,
                                         .IntervalS = 0.2,
                                         .Position = {},
                                         .AltitudeFt = 0,
                                         .Chat = "Hi",
                                         .Squawk = {}});
    const Bytes head = test::FromHex("46474653000100010000000"
                                     "7000000f20000012c00000000"
                                     "4b5345415f545700");
    EXPECT_TRUE(std::equal(head.begin(), head.end(), packet.begin()));
    EXPECT_EQ(packet.size(), 0xF2U);
    // On the equator at longitude 0 the place is the earth's radius along x, and north is z.
    EXPECT_EQ(Bytes(packet.begin() + 144, packet.begin() + 152), test::FromHex("415854a640000000"));
    EXPECT_EQ(Bytes(packet.begin() + 228, packet.end()), test::FromHex("1face002"
                                                                       "000a0002"
                                                                       "27120002"
                                                                       "4869"));
}

struct PropertiesCase {
    const char* Name;
    std::uint32_t Encoding;
    const char* Hex;
    std::optional<std::int32_t> Squawk;
    std::optional<std::string> Chat;
};

class FlightGearProperties : public testing::TestWithParam<PropertiesCase> {};

TEST_P(FlightGearProperties, EndWhereTheyCannotBeUnderstood)
{
    const Bytes bytes = test::FromHex(GetParam().Hex);
    XdrReader reader(bytes);
    const Properties read = ReadProperties(reader, GetParam().Encoding);
    EXPECT_EQ(read.Squawk, GetParam().Squawk);
    EXPECT_EQ(read.Chat, GetParam().Chat);
}

INSTANTIATE_TEST_SUITE_P(FlightGear, FlightGearProperties,
                         testing::Values(PropertiesCase{"Short", MixedProperties,
                                                        "05dc10e1"
                                                        "27120002"
                                                        "4869",
                                                        4321, "Hi"},
                                         PropertiesCase{"LongAmongShort", MixedProperties,
                                                        "000005dcffffd8f1"
                                                        "0000271200000000",
                                                        -9999, ""},
                                         PropertiesCase{"UnalignedBehindAText", MixedProperties,
                                                        "27120001"
                                                        "48"
                                                        "05dc0015",
                                                        21, "H"},
                                         PropertiesCase{"UnknownId",
                                                        MixedProperties,
                                                        "05dc0015"
                                                        "00090001"
                                                        "27120002"
                                                        "4869",
                                                        21,
                                                        {}},
                                         PropertiesCase{"NegativeId",
                                                        MixedProperties,
                                                        "05dc0015"
                                                        "f5dc0001"
                                                        "27120002"
                                                        "4869",
                                                        21,
                                                        {}},
                                         PropertiesCase{"NegativeLength",
                                                        MixedProperties,
                                                        "05dc0015"
                                                        "2712ffff"
                                                        "4869",
                                                        21,
                                                        {}},
                                         PropertiesCase{"TextBeyondTheEnd",
                                                        MixedProperties,
                                                        "05dc0015"
                                                        "27120003"
                                                        "4869",
                                                        21,
                                                        {}},
                                         PropertiesCase{"LongTextBeyondTheEnd",
                                                        LongProperties,
                                                        "000005dc00000015"
                                                        "0000271240000001"
                                                        "00000048",
                                                        21,
                                                        {}},
                                         PropertiesCase{"LongTextWithoutPadding",
                                                        LongProperties,
                                                        "0000271200000001"
                                                        "ffffffc3",
                                                        {},
                                                        "\xC3"},
                                         PropertiesCase{"AncientProgram", 0x3F800000, "05dc0015", {}, {}}),
                         [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane::flightgear
