#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
enum class InstructionKind : std::uint8_t {
    Heading,
    Altitude,
    Speed,
    Direct,
    Approach,
    GoAround,
    Hold,
    Say,
    Resume,
};
enum class HeadingTurn : std::uint8_t { Shorter, Left, Right };
enum class SayWhat : std::uint8_t { Altitude, Heading, Speed, Position };

/// One thing that a controller tells a pilot.
struct Instruction {
    InstructionKind Kind = InstructionKind::Resume;
    int Number = 0;   ///< Heading: 1 .. 360 magnetic; Altitude: feet; Speed: knots
    int Change = 0;   ///< Altitude: 1 for climb, -1 for descend, 0 for neither
    bool Ils = false; ///< Approach: on the ILS, not just to the runway
    HeadingTurn Turn = HeadingTurn::Shorter;
    SayWhat What = SayWhat::Altitude;
    std::string Name; ///< Direct: the identifier; Approach: the runway; both in capitals
    bool operator==(const Instruction&) const = default;
};

/// What a line means; Understood is false when any part of it made no sense, and then none of it is to be flown.
struct ParsedLine {
    std::vector<Instruction> Instructions;
    bool Understood = true;
    bool operator==(const ParsedLine&) const = default;
};

/// Who a chat line speaks to.
struct Addressee {
    bool Ambiguous = false; ///< several callsigns begin with what was said
    std::size_t Index = 0;  ///< of the callsign; of the first of them when ambiguous
    std::string Rest;       ///< the line without the callsign
};

/// Finds the callsign that a line names: a whole callsign anywhere in it, or a beginning of at least three characters
/// as its first word. Letter case, hyphens and punctuation do not matter. Nothing when it names none.
std::optional<Addressee> FindAddressee(std::string_view line, std::span<const std::string> callsigns);

/// Reads instructions as controllers say them, several in a line in any letter case:
///   [turn left|turn right|left|right|fly] heading 270      climb|descend [and maintain|to] 5000 | FL180
///   maintain 5000          speed 210                       direct SEA | proceed direct KSEA
///   cleared [for] [the] ILS [runway] 16R [approach]        cleared [for] visual|approach|to land [runway] 16R
///   go around   hold   say altitude|heading|speed|position   resume own navigation
ParsedLine ParseInstructions(std::string_view line);
} // namespace corvane
