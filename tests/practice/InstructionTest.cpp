#include "practice/Instruction.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {
/// An instruction in short, so that a table of lines reads: kind, number, turn or change, name.
std::string Short(const Instruction& i)
{
    const std::string number = std::to_string(i.Number);
    switch (i.Kind) {
    case InstructionKind::Heading:
        return "hdg" + number + (i.Turn == HeadingTurn::Left ? "L" : i.Turn == HeadingTurn::Right ? "R" : "");
    case InstructionKind::Altitude: return "alt" + number + (i.Change > 0 ? "+" : i.Change < 0 ? "-" : "");
    case InstructionKind::Speed: return "spd" + number;
    case InstructionKind::Direct: return "dct:" + i.Name;
    case InstructionKind::Approach: return (i.Ils ? "ils:" : "app:") + i.Name;
    case InstructionKind::GoAround: return "around";
    case InstructionKind::Hold: return "hold";
    case InstructionKind::Say: return "say" + std::to_string(static_cast<int>(i.What));
    case InstructionKind::Resume: return "own";
    }
    return "?";
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

TEST(Instructions, AreReadAsControllersSayThem)
{
    const std::pair<const char*, const char*> lines[] = {
        {"heading 270", "hdg270"},
        {"fly heading 090", "hdg90"},
        {"HDG 5", "hdg5"},
        {"heading 0", "hdg360"},
        {"heading 361", "say again"},
        {"turn left heading 180", "hdg180L"},
        {"Turn right, heading 090.", "hdg90R"},
        {"turn left 180", "hdg180L"},
        {"right heading 360 degrees", "hdg360R"},
        {"climb 5000", "alt5000+"},
        {"climb and maintain 5,000 feet", "alt5000+"},
        {"descend to 3000ft", "say again"}, // 3000ft is no number
        {"descend 3000 ft", "alt3000-"},
        {"climb FL180", "alt18000+"},
        {"climb to fl 180", "alt18000+"},
        {"climb flight level 180", "alt18000+"},
        {"maintain 4000", "alt4000"},
        {"climb FL700", "say again"}, // above anything that flies here
        {"descend 99999999999999999999", "say again"},
        {"speed 210", "spd210"},
        {"reduce speed to 180 knots", "spd180"},
        {"direct KSEA", "dct:KSEA"},
        {"proceed direct to sea", "dct:SEA"},
        {"cleared ILS 16R", "ils:16R"},
        {"cleared for the ils runway 09l approach", "ils:09L"},
        {"cleared visual approach runway 9", "app:9"},
        {"cleared to land 34L", "app:34L"},
        {"cleared ILS", "say again"},
        {"cleared ILS please", "say again"},
        {"go around", "around"},
        {"go-around!", "around"},
        {"go", "say again"},
        {"hold", "hold"},
        {"hold position", "hold"},
        {"say altitude", "say0"},
        {"say your heading", "say1"},
        {"say speed?", "say2"},
        {"resume own navigation", "own"},
        {"turn left heading 190, descend 2500, speed 170, cleared ILS 16R", "hdg190L alt2500- spd170 ils:16R"},
        {"climb 5000 and then direct BIG", "alt5000+ dct:BIG"},
        {"heading 270 and a nice day", "say again"}, // no part of a line that is not understood is flown
        {"hello there", "say again"},
        {"", "say again"},
        {"say speed say speed say speed say speed say speed say speed say speed say speed say speed", "say again"},
    };
    for (const auto& [line, meaning] : lines)
        EXPECT_EQ(Short(ParseInstructions(line)), meaning) << line;
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
