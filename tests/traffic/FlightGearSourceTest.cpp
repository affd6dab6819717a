#include "traffic/flightgear/FlightGearSource.h"

#include "tests/traffic/FlightGearData.h"

#include <gmock/gmock.h>

#include <functional>
#include <sstream>

namespace corvane {
namespace {
using flightgear::DecodePosition;
using flightgear::EncodePosition;
using flightgear::OwnPosition;
using test::SamplePilot;
using testing::ElementsAre;
using testing::IsEmpty;

/// An event in one line; positions by their latitude.
std::string EventText(const TrafficEvent& event)
{
    std::ostringstream text;
    if (const auto* appeared = std::get_if<AircraftAppeared>(&event))
        text << appeared->Key << " appears " << appeared->Name << " " << appeared->ShortType
             << (appeared->IsPilot ? "" : " controls");
    else if (const auto* moved = std::get_if<AircraftMoved>(&event))
        text << moved->Key << " at " << moved->Report.Position.Lat;
    else if (const auto* said = std::get_if<AircraftSaid>(&event))
        text << said->Key << " says " << said->Text;
    else if (const auto* vanished = std::get_if<AircraftVanished>(&event))
        text << vanished->Key << " vanishes";
    else if (const auto* notice = std::get_if<SourceNotice>(&event))
        text << "notice " << notice->Text.substr(0, notice->Text.find(':'));
    return text.str();
}

class FlightGearTraffic : public testing::Test {
protected:
    /// A packet of a pilot, changed.
    void Hear(const std::string& callsign, double timeS, const std::function<void(OwnPosition&)>& change = {})
    {
        OwnPosition pilot = SamplePilot(callsign, timeS);
        if (change)
            change(pilot);
        Source.Receive(EncodePosition(pilot), NowMs);
    }
    /// Lets time pass as a link does; what is sent is kept.
    void Live(std::int64_t ms)
    {
        for (const std::int64_t until = NowMs + ms; NowMs < until;) {
            NowMs += 100;
            Source.Advance(NowMs);
            for (const Bytes& datagram : Source.TakeOutput())
                Sent.push_back(DecodePosition(datagram).value());
        }
    }
    std::vector<std::string> Events()
    {
        std::vector<std::string> texts;
        for (const TrafficEvent& event : Source.TakeEvents())
            texts.push_back(EventText(event));
        return texts;
    }
    /// The lines that others read in what was sent by a callsign, one after another.
    [[nodiscard]] std::vector<std::string> Read(const std::string& callsign) const
    {
        std::vector<std::string> lines;
        std::string last;
        for (const auto& packet : Sent) {
            if (packet.Callsign != callsign)
                continue;
            EXPECT_TRUE(packet.Told.Chat) << "or others see what somebody else has said";
            if (const std::string text = packet.Told.Chat.value_or(""); text != last)
                lines.push_back(last = text);
        }
        return lines;
    }

    FlightGearSource Source{{.Callsign = "KSEA_TW",
                             .Position = {47.45, -122.31},
                             .ElevationFt = 433,
                             .RangeNm = 100,
                             .Partner = "relay",
                             .UtcS = 86390}};
    std::int64_t NowMs = 0;
    std::vector<flightgear::PositionPacket> Sent;
};

TEST_F(FlightGearTraffic, TellsAPilotFromTheFirstPacketToTenSecondsAfterTheLast)
{
    for (int i = 0; i < 21; ++i) { // ten packets a second, of which one a second is told
        Hear("TEST01", 100 + i * 0.1, [i](OwnPosition& pilot) {
            pilot.Position.Lat = 47 + i * 0.001;
            pilot.Chat = i < 15 ? "Hello" : "";
        });
        Live(100);
    }
    EXPECT_THAT(Events(), ElementsAre("1 appears TEST01 c172p", "1 at 47", "1 says Hello", "1 at 47.01", "1 at 47.02"));
    Live(9800);
    EXPECT_THAT(Events(), IsEmpty());
    Live(200);
    EXPECT_THAT(Events(), ElementsAre("1 vanishes"));
    Hear("TEST01", 200);
    EXPECT_THAT(Events(), ElementsAre("2 appears TEST01 c172p", "2 at 47.45"));
}

struct SecondPacketCase {
    const char* Name;
    std::int64_t AfterMs;
    const char* Callsign;
    double TimeS;
    double Lat;
    const char* Model;
    bool Counts;
};

class SecondPacket : public FlightGearTraffic, public testing::WithParamInterface<SecondPacketCase> {};

/// A pilot at 47.45 whose clock says 100 is followed by one more packet.
TEST_P(SecondPacket, CountsWhereItsSenderCanHaveSentIt)
{
    Hear("TEST01", 100);
    Live(GetParam().AfterMs);
    static_cast<void>(Events());
    Hear(GetParam().Callsign, GetParam().TimeS, [](OwnPosition& pilot) {
        pilot.Position.Lat = GetParam().Lat;
        pilot.Model = GetParam().Model;
        pilot.Chat = "heard";
    });
    const auto events = Source.TakeEvents();
    EXPECT_EQ(std::any_of(events.begin(), events.end(),
                          [](const TrafficEvent& event) { return std::holds_alternative<AircraftSaid>(event); }),
              GetParam().Counts);
}

constexpr const char* Cessna = "Aircraft/c172p/Models/c172p.xml";
INSTANTIATE_TEST_SUITE_P(
    FlightGear, SecondPacket,
    testing::Values(SecondPacketCase{"Next", 1000, "TEST01", 101, 47.46, Cessna, true},
                    SecondPacketCase{"SameTime", 1000, "TEST01", 100, 47.46, Cessna, true},
                    SecondPacketCase{"Late", 1000, "TEST01", 95, 47.46, Cessna, false},
                    SecondPacketCase{"NewClock", 1000, "TEST01", 0.5, 47.46, Cessna, true},
                    SecondPacketCase{"FarAwayAtOnce", 1000, "TEST01", 101, 48.46, Cessna, false},
                    SecondPacketCase{"FarAwayAfterASilence", 6000, "TEST01", 101, 48.46, Cessna, true},
                    SecondPacketCase{"AnotherAircraftAtOnce", 1000, "TEST01", 101, 47.45, "ufo.xml", false},
                    SecondPacketCase{"SpaceBehindTheCallsign", 1000, "TEST01 ", 101, 47.45, Cessna, false},
                    SecondPacketCase{"OurOwnCallsign", 1000, "KSEA_TW", 101, 47.45, Cessna, false},
                    SecondPacketCase{"NothingButControlCharacters", 1000, "\x01\x02 ", 101, 47.45, Cessna, false}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(FlightGearTraffic, HearsARepeatedLineOnceAndASecondTimeAfterAPause)
{
    for (const char* text : {"Hi", "Hi", "", "Hi", "line\nend",
                             "Gr\xC3\xBC\xC3\x9F"
                             "e",
                             "Gr\xFC\xDF"
                             "e!"}) {
        Hear("TEST01", 100, [text](OwnPosition& pilot) { pilot.Chat = text; });
        Live(100);
    }
    EXPECT_THAT(Events(),
                ElementsAre("1 appears TEST01 c172p", "1 at 47.45", "1 says Hi", "1 says Hi", "1 says line end",
                            "1 says Gr\xFC\xDF"
                            "e",
                            "1 says Gr\xFC\xDF"
                            "e!"));
}

TEST_F(FlightGearTraffic, TellsAControllerFromAPilot)
{
    Hear("PHTO_TW", 100, [](OwnPosition& pilot) { pilot.Model = "Aircraft/ATC/Models/ATC.xml"; });
    EXPECT_EQ(Events().front(), "1 appears PHTO_TW ATC controls");
}

/// Once a second in silence, five times while there is something to say; the clock begins anew at midnight.
TEST_F(FlightGearTraffic, IsThereWhereItStands)
{
    Live(5000);
    EXPECT_EQ(Sent.size(), 5U);
    EXPECT_NEAR(Sent.back().Position.Lat, 47.45, 1e-9);
    EXPECT_NEAR(Sent.back().AltitudeFt, 483, 1e-3);
    Live(10000);
    EXPECT_LT(Sent.back().TimeS, 10);
}

TEST_F(FlightGearTraffic, SaysLinesLongEnoughToBeRead)
{
    for (const char* line : {"one", "one", "two"})
        Source.Tell(LineSaid{line});
    Live(2400);
    EXPECT_THAT(Read("KSEA_TW"), ElementsAre("one"));
    Live(12000);
    EXPECT_THAT(Read("KSEA_TW"), ElementsAre("one", "one ", "two"));
    EXPECT_GE(Sent.size(), 14 * 4U);
    Live(3000);
    EXPECT_THAT(Read("KSEA_TW"), ElementsAre("one", "one ", "two", ""));
    Source.Tell(LineSaid{std::string(479, 'a') + "\xFC\xFC"}); // two bytes each in UTF-8
    Live(6000);
    EXPECT_EQ(Read("KSEA_TW").at(4), std::string(479, 'a'));
    EXPECT_EQ(Read("KSEA_TW").at(5), "\xC3\xBC\xC3\xBC");
}

/// Seven characters are not many: two pilots may come out the same, or the same as somebody who is there.
TEST_F(FlightGearTraffic, ShowsTheSessionsPilotsAndDropsTheirEcho)
{
    Hear("SPEEDBI", 100);
    static_cast<void>(Events());
    const TrafficReport report{.Position = {47.5, -122.3}, .AltitudeFt = 900, .Squawk = {}, .FrequencyKhz = {}};
    for (const char* name : {"Speedbird 12", "Speedbird 34", "**Tower", "SPEEDBI", "KSEA_TW"})
        Source.Tell(MemberMoved{name, report});
    Live(200);
    std::set<std::string> callsigns;
    for (const auto& packet : Sent)
        callsigns.insert(packet.Callsign);
    EXPECT_THAT(callsigns,
                testing::UnorderedElementsAre("KSEA_TW", "Speedbi", "Speedb2", "Tower", "SPEEDB2", "KSEA_T2"));
    Hear("Speedb2", 100);
    EXPECT_THAT(Events(), IsEmpty());
    Source.Tell(MemberLeft{"Speedbird 34"});
    Sent.clear();
    Live(3000);
    EXPECT_THAT(Read("Speedb2"), IsEmpty());
    EXPECT_FALSE(Read("Speedbi").empty() && std::none_of(Sent.begin(), Sent.end(), [](const auto& packet) {
                     return packet.Callsign == "Speedbi";
                 }));
}

TEST_F(FlightGearTraffic, TellsOnceHowTheLinkIs)
{
    Live(35000);
    Source.Refused(NowMs);
    Source.Refused(NowMs);
    Hear("TEST01", 100);
    EXPECT_THAT(Events(), ElementsAre("notice Nothing has been heard from relay for 30 seconds", "notice relay refuses",
                                      "notice relay is heard now.", "1 appears TEST01 c172p", "1 at 47.45"));
}

TEST_F(FlightGearTraffic, RefusesAFloodOfCallsignsAndKeepsWhoIsThere)
{
    Hear("TEST01", 100);
    std::size_t told = 0;
    for (int second = 0; second < 60; ++second) {
        for (int i = 0; i < 1000; ++i)
            Hear("F" + std::to_string(second * 1000 + i), 100);
        Hear("TEST01", 101 + second);
        Live(1000);
        for (const TrafficEvent& event : Source.TakeEvents()) {
            told += std::holds_alternative<AircraftAppeared>(event) ? 1U : 0U;
            const auto* vanished = std::get_if<AircraftVanished>(&event);
            EXPECT_FALSE(vanished != nullptr && vanished->Key == 1);
        }
        EXPECT_LE(Source.PilotCount(), flightgear::PilotList::MostPilots);
    }
    EXPECT_LT(told, 20000U); // of 60,000
}
} // namespace
} // namespace corvane
