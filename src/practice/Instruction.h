#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
enum class InstructionKind : std::uint8_t {
    Heading,
    TurnBy,         ///< Number degrees from the present heading
    PresentHeading, ///< keep flying it
    RunwayHeading,
    Altitude,
    Speed,
    OwnSpeed, ///< no restriction any more
    SlowestSpeed,
    Direct,
    Hold,      ///< at Name, or where the aircraft is
    Localizer, ///< join it and stay level
    Approach,
    Land,
    TouchAndGo,
    GoAround,
    Resume,
    Pushback,
    Taxi,
    TaxiIn,
    HoldShort,
    Cross,
    LineUp,
    TakeOff,
    Vacate,
    Squawk,
    Ident,
    Contact,
    Report,
    Say,
    Repeat,
    Expect,
    Cancel,
    Disregard, ///< the instructions before it
    Advice,    ///< asks for nothing
    Greeting,
    When,  ///< only while a line is read: the condition of a neighbour
    Until, ///< likewise, for how long
};
enum class HeadingTurn : std::uint8_t { Shorter, Left, Right };
enum class SayWhat : std::uint8_t { Altitude, Heading, Speed, Position, Intentions, AircraftType, Transponder, Fuel };
enum class CancelWhat : std::uint8_t { TakeOff, Approach, Landing };

/// A moment in a flight that an instruction waits for or ends with.
struct Moment {
    enum class Kind : std::uint8_t { None, Altitude, Fix, Established, Airborne, FinalMiles, FieldInSight, Ready };
    Kind At = Kind::None;
    int Number = 0; ///< feet; nautical miles
    std::string Name = {};
    [[nodiscard]] bool IsSet() const noexcept { return At != Kind::None; }
    bool operator==(const Moment&) const = default;
};

/// One thing that a controller tells a pilot.
struct Instruction {
    InstructionKind Kind = InstructionKind::Resume;
    int Number = 0;   ///< Heading: 1 .. 360 magnetic; TurnBy: degrees; Altitude: feet; Speed: knots; Squawk: the code
    int Change = 0;   ///< Altitude: 1 for climb, -1 for descend, 0 for neither
    bool Ils = false; ///< Approach, Expect: on the ILS, not just to the runway
    HeadingTurn Turn = HeadingTurn::Shorter;
    SayWhat What = SayWhat::Altitude;
    CancelWhat Cancels = CancelWhat::TakeOff;
    int Minutes = 0;       ///< Hold: length of a leg; 0 for the usual one
    int SideDeg = -1;      ///< Hold: the side of the fix, as the compass says; -1 for the present track's
    std::string Name = {}; ///< a place's identifier, a runway or a frequency, in capitals; empty for the usual one
    std::vector<std::string> Via = {}; ///< Taxi, Vacate: taxiways
    Moment When = {};                  ///< done then, not now; Report: tells then
    std::string_view ReadBack = {};    ///< with slots, of the phrase that was said; see PhraseTable
    Moment Until = {};                 ///< done until then

    /// Is about a moment itself, so that its numbers and names are the moment's.
    [[nodiscard]] bool HasMoment() const noexcept
    {
        return Kind == InstructionKind::When || Kind == InstructionKind::Until || Kind == InstructionKind::Report;
    }
    bool operator==(const Instruction&) const = default;
};

/// What a line means; Understood is false when any part of it made no sense, and then none of it is to be flown.
struct ParsedLine {
    std::vector<Instruction> Instructions;
    bool Understood = true;
    bool operator==(const ParsedLine&) const = default;
};

/// Reads instructions as controllers say and type them, up to eight in a line: the wordings of PhraseTable, with
/// numbers in figures or spoken, in any letter case.
ParsedLine ParseInstructions(std::string_view line);
} // namespace corvane
