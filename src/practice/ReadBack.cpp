#include "practice/ReadBack.h"

#include "core/NumberText.h"
#include "practice/PhraseMatch.h"
#include "practice/PilotTalk.h"

#include <array>
#include <span>

namespace corvane {
static std::string JoinedNames(std::string_view before, std::span<const std::string> names)
{
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? std::string(before) : " ") + name;
    return text;
}

static std::string HoldPlace(const Instruction& hold)
{
    constexpr std::array<std::string_view, 8> Sides{"north", "northeast", "east", "southeast",
                                                    "south", "southwest", "west", "northwest"};
    if (hold.Name.empty())
        return "over present position";
    if (hold.SideDeg < 0)
        return "at " + hold.Name;
    return std::string(Sides[static_cast<std::size_t>(hold.SideDeg / 45) % Sides.size()]) + " of " + hold.Name;
}

static std::string SlotText(std::string_view slot, const Instruction& instruction, std::string_view change)
{
    const bool moment = instruction.When.IsSet();
    const int number = moment && instruction.HasMoment() ? instruction.When.Number : instruction.Number;
    if (slot == "turn") {
        if (instruction.Turn == HeadingTurn::Shorter)
            return instruction.Kind == InstructionKind::Hold ? "right" : "";
        return instruction.Turn == HeadingTurn::Left ? "left" : "right";
    }
    if (slot == "heading")
        return HeadingText(number);
    if (slot == "altitude")
        return AltitudeText(number);
    if (slot == "change")
        return std::string(change);
    if (slot == "place")
        return instruction.HasMoment() ? instruction.When.Name : instruction.Name;
    if (slot == "runway")
        return instruction.Name.empty() ? "" : "runway " + instruction.Name;
    if (slot == "via")
        return JoinedNames("via ", instruction.Via);
    if (slot == "where")
        return HoldPlace(instruction);
    if (slot == "ident" || slot == "code" || slot == "frequency")
        return instruction.Name;
    return NumberText(std::int32_t{number});
}
/// A read-back with its slots filled; words for which there is nothing vanish with their spaces.
static std::string Filled(std::string_view readBack, const Instruction& instruction, std::string_view change)
{
    std::string text;
    const auto append = [&text](std::string_view word) {
        if (!word.empty())
            text += (text.empty() ? "" : " ") + std::string(word);
    };
    while (!readBack.empty()) {
        const std::string_view element = TakeElement(readBack);
        const std::size_t close = element.find('}');
        if (element.starts_with('{') && close != std::string_view::npos)
            append(SlotText(element.substr(1, close - 1), instruction, change) +
                   std::string(element.substr(close + 1)));
        else
            append(element);
    }
    return text;
}

static std::string MomentText(InstructionKind kind, const Moment& moment)
{
    for (const Phrase& phrase : PhraseTable())
        if (phrase.Kind == kind && phrase.Variant == static_cast<int>(moment.At))
            return Filled(phrase.ReadBack, {.Kind = kind, .When = moment}, {});
    return {};
}

std::string ReadBackOf(const Instruction& instruction, std::string_view change)
{
    std::string text = Filled(instruction.ReadBack, instruction, change);
    if (instruction.When.IsSet() && instruction.Kind != InstructionKind::Report)
        text = MomentText(InstructionKind::When, instruction.When) + " " + text;
    if (instruction.Until.IsSet())
        text += " " + MomentText(InstructionKind::Until, instruction.Until);
    return text;
}
} // namespace corvane
