#include "practice/Instruction.h"

#include "practice/Addressee.h"
#include "practice/PhraseBook.h"
#include "tests/practice/Phrasings.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace corvane {
namespace {
/// A moment in short, after the word that introduces it.
std::string Short(const char* word, const Moment& moment)
{
    switch (moment.At) {
    case Moment::Kind::None: return "";
    case Moment::Kind::Altitude: return word + std::to_string(moment.Number);
    case Moment::Kind::Fix: return word + (":" + moment.Name);
    case Moment::Kind::Established: return std::string(word) + "est";
    case Moment::Kind::Airborne: return std::string(word) + "air";
    case Moment::Kind::FinalMiles: return word + std::to_string(moment.Number) + "nm";
    case Moment::Kind::FieldInSight: return std::string(word) + "field";
    case Moment::Kind::Ready: return std::string(word) + "ready";
    }
    return "?";
}

std::string Hold(const Instruction& i)
{
    constexpr std::array<const char*, 8> Sides{"north", "northeast", "east", "southeast",
                                               "south", "southwest", "west", "northwest"};
    std::string text = i.Name.empty() ? "hold" : "hold:" + i.Name;
    if (i.SideDeg >= 0)
        text += std::string(" ") + Sides[static_cast<std::size_t>(i.SideDeg / 45)];
    text += i.Turn == HeadingTurn::Left ? " L" : i.Turn == HeadingTurn::Right ? " R" : "";
    return i.Minutes == 0 ? text : text + " " + std::to_string(i.Minutes) + "min";
}

/// An instruction in short, so that a table of lines reads: kind, number, turn or change, name.
std::string What(const Instruction& i)
{
    constexpr std::array<const char*, 3> Turns{"", "L", "R"};
    constexpr std::array<const char*, 8> Says{"altitude",   "heading", "speed",  "position",
                                              "intentions", "type",    "squawk", "fuel"};
    constexpr std::array<const char*, 3> Cancels{"takeoff", "approach", "landing"};
    const std::string number = std::to_string(i.Number);
    const std::string turn = Turns[static_cast<std::size_t>(i.Turn)];
    std::string via;
    for (const std::string& name : i.Via)
        via += (via.empty() ? " via " : " ") + name;
    switch (i.Kind) {
    case InstructionKind::Heading: return "hdg" + number + turn;
    case InstructionKind::TurnBy: return "by" + number + turn;
    case InstructionKind::PresentHeading: return "keep";
    case InstructionKind::RunwayHeading: return "rwyhdg";
    case InstructionKind::Altitude: return "alt" + number + (i.Change > 0 ? "+" : i.Change < 0 ? "-" : "");
    case InstructionKind::Speed: return "spd" + number;
    case InstructionKind::OwnSpeed: return "ownspd";
    case InstructionKind::SlowestSpeed: return "minspd";
    case InstructionKind::Direct: return "dct:" + i.Name;
    case InstructionKind::Hold: return Hold(i);
    case InstructionKind::Localizer: return "loc:" + i.Name;
    case InstructionKind::Approach: return (i.Ils ? "ils:" : "app:") + i.Name;
    case InstructionKind::Land: return "land:" + i.Name;
    case InstructionKind::TouchAndGo: return (i.Change == 0 ? "touch:" : "low:") + i.Name;
    case InstructionKind::GoAround: return "around";
    case InstructionKind::Resume: return "own";
    case InstructionKind::Pushback: return "push";
    case InstructionKind::Taxi: return "taxi:" + i.Name + via;
    case InstructionKind::TaxiIn: return "stand" + via;
    case InstructionKind::HoldShort: return "short:" + i.Name;
    case InstructionKind::Cross: return "cross:" + i.Name;
    case InstructionKind::LineUp: return "lineup:" + i.Name;
    case InstructionKind::TakeOff: return "takeoff:" + i.Name;
    case InstructionKind::Vacate: return "vacate " + turn + via;
    case InstructionKind::Squawk: return "squawk" + i.Name;
    case InstructionKind::Ident: return "ident";
    case InstructionKind::Contact: return "contact" + i.Name;
    case InstructionKind::Report: return Short(i.When.At == Moment::Kind::Fix ? "report" : "report ", i.When);
    case InstructionKind::Say: return std::string("say ") + Says[static_cast<std::size_t>(i.What)];
    case InstructionKind::Repeat: return "repeat";
    case InstructionKind::Expect: return (i.Ils ? "expect ils:" : "expect app:") + i.Name;
    case InstructionKind::Cancel: return std::string("cancel ") + Cancels[static_cast<std::size_t>(i.Cancels)];
    case InstructionKind::Disregard: return "disregard";
    case InstructionKind::Advice: return "roger";
    case InstructionKind::Greeting: return "hello";
    case InstructionKind::When:
    case InstructionKind::Until: break;
    }
    return "?";
}

std::string Short(const Instruction& i)
{
    std::string text = What(i);
    if (i.When.IsSet() && i.Kind != InstructionKind::Report)
        text += Short(" when", i.When);
    return i.Until.IsSet() ? text + Short(" until", i.Until) : text;
}

std::string Short(const ParsedLine& line)
{
    if (!line.Understood)
        return "say again";
    std::string text;
    for (const Instruction& instruction : line.Instructions)
        text += (text.empty() ? "" : " ") + Short(instruction);
    return text;
}

TEST(Instructions, AreReadAsControllersAndSimmersTypeThem)
{
    for (const auto& [line, meaning] : test::Phrasings)
        EXPECT_EQ(Short(ParseInstructions(line)), meaning) << line;
}

TEST(PhraseBooks, AreWhatThePilotsReadBy)
{
    const char* const source = std::getenv("CORVANE_SOURCE"); // NOLINT(concurrency-mt-unsafe): one thread
    if (source == nullptr)
        GTEST_SKIP() << "CORVANE_SOURCE names no folder";
    std::ifstream file(std::string(source) + "/docs/phrases.md", std::ios::binary);
    const std::string book{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const auto made = std::filesystem::temp_directory_path() / "corvane-phrases.md";
    if (book != PhraseBook())
        std::ofstream(made, std::ios::binary) << PhraseBook();
    EXPECT_EQ(book, PhraseBook()) << "the book to copy there is " << made;
}

TEST(Addressee, IsNamedInFullAnywhereOrBegunUnambiguously)
{
    const std::vector<std::string> callsigns{"N123AB", "N123CD", "N77XY", "Lantern412", "Lantern41"};
    struct Case {
        const char* Line;
        int Index; // -1 for nobody
        bool Ambiguous;
        const char* Rest;
    };
    const Case cases[] = {
        {"N123AB heading 270", 0, false, "HEADING 270"},
        {"n123cd, Climb 5,000!", 1, false, "CLIMB 5000"},
        {"N-77XY: hold", 2, false, "HOLD"},
        {"good morning N77XY", 2, false, "GOOD MORNING"},
        {"N77 hold", 2, false, "HOLD"},
        {"N123 hold", 0, true, "HOLD"},
        {"N123A hold", 0, false, "HOLD"},
        {"lan hold", 3, true, "HOLD"},
        {"lantern41 hold", 4, false, "HOLD"}, // whole, though also the beginning of another
        {"lantern412 hold", 3, false, "HOLD"},
        {"Lantern 412 hold", 3, false, "HOLD"},
        {"Lantern-412 hold", 3, false, "HOLD"},
        {"N 123 CD hold", 1, false, "HOLD"},
        {"November one two three Charlie Delta, hold", 1, false, "HOLD"},
        {"lantern four one two heavy, heading two seven zero", 3, false, "HEADING TWO SEVEN ZERO"},
        {"3CD hold", 1, false, "HOLD"},
        {"N3CD hold", 1, false, "HOLD"},
        {"Cessna 3CD hold", 1, false, "HOLD"},
        {"412 hold", 3, false, "HOLD"},
        {"Lantern 142 hold", 3, false, "HOLD"}, // two figures exchanged
        {"Lantrn 412 hold", 3, false, "HOLD"},
        {"N123AD hold", 0, true, "HOLD"}, // AB or CD
        {"N78XY hold", 2, false, "HOLD"},
        {"N99ZZ hold", -1, false, ""},
        {"good evening all", -1, false, ""},
        {"anyone on?", -1, false, ""},
        {"41 hold", -1, false, ""}, // two figures are anybody's
        {"N7 hold", -1, false, ""}, // too short a beginning
        {"hold N77", -1, false, ""},
        {"heading 270", -1, false, ""},
        {"", -1, false, ""},
    };
    for (const Case& c : cases) {
        const auto found = FindAddressee(c.Line, callsigns);
        ASSERT_EQ(found.has_value(), c.Index >= 0) << c.Line;
        if (!found)
            continue;
        EXPECT_EQ(static_cast<int>(found->Index), c.Index) << c.Line;
        EXPECT_EQ(found->Ambiguous, c.Ambiguous) << c.Line;
        EXPECT_EQ(found->Rest, c.Rest) << c.Line;
    }
}
} // namespace
} // namespace corvane
