#include "practice/PhraseSlots.h"

#include "practice/SpokenWords.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <utility>

namespace corvane {
using Words = std::span<const std::string>;
using Readings = std::vector<SlotReading>;

static bool IsOneOf(std::string_view word, std::span<const std::string_view> words) noexcept
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// Where a number goes: into the moment of phrases that are about one.
static void SetNumber(Instruction& instruction, int number) noexcept
{
    (instruction.HasMoment() ? instruction.When.Number : instruction.Number) = number;
}

static Readings ReadNumber(Words words, std::size_t at, const Instruction& sofar, int least, int most)
{
    const auto number = NumberAt(words, at);
    if (!number || number->Value < least || number->Value > most)
        return {};
    SlotReading reading{sofar, number->End};
    SetNumber(reading.Means, number->Value);
    return {reading};
}

static Readings ReadHeading(Words words, std::size_t at, const Instruction& sofar, bool threeFigures)
{
    constexpr int FullCircle = 360;
    const auto number = NumberAt(words, at);
    if (!number || number->Value > FullCircle || (threeFigures && number->Digits.size() != 3))
        return {};
    SlotReading reading{sofar, number->End};
    reading.Means.Number = number->Value == 0 ? FullCircle : number->Value;
    return {reading};
}

/// 10.000, as some write ten thousand.
static std::optional<int> ThousandsWithPoint(std::string_view word)
{
    constexpr std::size_t Group = 4; // with the point
    if (word.size() <= Group || word.size() > Group + 2 || word[word.size() - Group] != '.')
        return std::nullopt;
    std::string digits(word);
    digits.erase(word.size() - Group, 1);
    const std::array figures{digits};
    const auto number = NumberAt(figures, 0);
    return number ? std::optional(number->Value) : std::nullopt;
}

/// Feet: FL180, 5000, 10.000, ONE ZERO THOUSAND, FIVE THOUSAND FIVE HUNDRED.
static std::optional<std::pair<int, std::size_t>> AltitudeAt(Words words, std::size_t at)
{
    constexpr int FeetPerLevel = 100;
    constexpr int Thousand = 1000;
    constexpr int Highest = 600; // in levels; more than anything flies here
    if (at >= words.size())
        return std::nullopt;
    if (const auto feet = ThousandsWithPoint(words[at]))
        return std::pair(*feet, at + 1);
    const bool level = words[at] == "FL";
    const auto number = NumberAt(words, at + (level ? 1 : 0));
    if (!number)
        return std::nullopt;
    if (level)
        return number->Value <= Highest ? std::optional(std::pair(number->Value * FeetPerLevel, number->End))
                                        : std::nullopt;
    if (number->End >= words.size() || words[number->End] != "THOUSAND")
        return std::pair(number->Value, number->End);
    if (number->Value > Highest)
        return std::nullopt;
    const auto rest = NumberAt(words, number->End + 1);
    if (rest && rest->Value < Thousand && rest->Value % FeetPerLevel == 0)
        return std::pair(number->Value * Thousand + rest->Value, rest->End);
    return std::pair(number->Value * Thousand, number->End + 1);
}

static Readings ReadAltitude(Words words, std::size_t at, const Instruction& sofar)
{
    constexpr int LowestFt = 100;
    constexpr int HighestFt = 60000;
    const auto altitude = AltitudeAt(words, at);
    if (!altitude || altitude->first < LowestFt || altitude->first > HighestFt)
        return {};
    SlotReading reading{sofar, altitude->second};
    if (reading.End < words.size() && words[reading.End] == "FEET")
        ++reading.End;
    SetNumber(reading.Means, altitude->first);
    return {reading};
}

static Readings ReadTurn(Words words, std::size_t at, const Instruction& sofar)
{
    if (words[at] != "LEFT" && words[at] != "RIGHT")
        return {};
    SlotReading reading{sofar, at + 1};
    reading.Means.Turn = words[at] == "LEFT" ? HeadingTurn::Left : HeadingTurn::Right;
    return {reading};
}

static Readings ReadPlace(Words words, std::size_t at, const Instruction& sofar)
{
    // Words of the phrases that are as short as identifiers.
    constexpr std::array<std::string_view, 43> Reserved{
        "THE",   "TO",    "AND",   "THEN",  "LEFT",  "RIGHT", "FOR",    "AT",   "SHORT", "UNTIL", "WHEN",
        "TURN",  "CLIMB", "SPEED", "LAND",  "YOUR",  "ILS",   "AFTER",  "ON",   "OF",    "AS",    "OVER",
        "VIA",   "A",     "AN",    "TAXI",  "CROSS", "LINE",  "SAY",    "HOLD", "STOP",  "ONCE",  "FINAL",
        "READY", "NORTH", "EAST",  "SOUTH", "WEST",  "FIELD", "PLEASE", "NOW",  "OWN",   "NAV"};
    constexpr std::size_t LongestIdent = 5;
    const std::string& word = words[at];
    const bool letter = std::any_of(word.begin(), word.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    if (!letter || word.size() > LongestIdent || word.find('.') != std::string::npos || IsOneOf(word, Reserved))
        return {};
    SlotReading reading{sofar, at + 1};
    (sofar.HasMoment() ? reading.Means.When.Name : reading.Means.Name) = word;
    return {reading};
}

/// 16R in one word or two, and without its side where the side may be another instruction's.
static Readings ReadRunway(Words words, std::size_t at, const Instruction& sofar)
{
    constexpr std::array<std::string_view, 6> Sides{"LEFT", "RIGHT", "CENTER", "L", "R", "C"};
    constexpr int Most = 36;
    constexpr std::size_t Figures = 2;
    const std::string_view word = words[at];
    const bool withSide = word.size() > 1 && IsOneOf(word.substr(word.size() - 1), Sides);
    std::vector<std::string> digits(words.begin() + static_cast<std::ptrdiff_t>(at), words.end());
    if (withSide)
        digits.front().pop_back();
    const auto number = NumberAt(digits, 0);
    if (!number || number->Digits.size() > Figures || number->Value < 1 || number->Value > Most ||
        (withSide && number->End != 1))
        return {};
    SlotReading plain{sofar, at + number->End};
    plain.Means.Name = withSide ? std::string(word) : number->Digits;
    Readings readings{plain};
    if (!withSide && plain.End < words.size() && IsOneOf(words[plain.End], Sides)) {
        SlotReading sided = plain;
        sided.Means.Name += words[sided.End++].front();
        readings.push_back(sided);
    }
    return readings;
}

/// A, ALPHA, B3, BRAVO 3: the name, and how many words it takes; 0 for other words.
static std::pair<std::string, std::size_t> TaxiwayAt(Words words, std::size_t at)
{
    if (const char letter = LetterOf(words[at]); letter != '\0') {
        const bool numbered = at + 1 < words.size() && DigitOf(words[at + 1]) != '\0';
        return numbered ? std::pair(std::string{letter, DigitOf(words[at + 1])}, std::size_t{2})
                        : std::pair(std::string(1, letter), std::size_t{1});
    }
    const std::string& word = words[at];
    constexpr std::size_t Longest = 4;
    const bool named = word.size() > 1 && word.size() <= Longest && word.front() >= 'A' && word.front() <= 'Z' &&
                       std::all_of(word.begin() + 1, word.end(),
                                   [&word](char c) { return (c >= '0' && c <= '9') || c == word.front(); });
    return {named ? word : std::string(), named ? 1 : 0};
}

static Readings ReadTaxiways(Words words, std::size_t at, const Instruction& sofar)
{
    constexpr std::size_t Most = 10;
    SlotReading reading{sofar, at};
    while (reading.End < words.size() && reading.Means.Via.size() < Most) {
        const bool joined = reading.End > at && words[reading.End] == "AND" && reading.End + 1 < words.size();
        auto [name, count] = TaxiwayAt(words, reading.End + (joined ? 1 : 0));
        if (count == 0)
            break;
        reading.Means.Via.push_back(std::move(name));
        reading.End += count + (joined ? 1 : 0);
    }
    return reading.End > at ? Readings{reading} : Readings{};
}

static Readings ReadCode(Words words, std::size_t at, const Instruction& sofar)
{
    constexpr std::size_t Figures = 4;
    const auto number = NumberAt(words, at);
    if (!number || number->Digits.size() != Figures || number->Digits.find_first_of("89") != std::string::npos)
        return {};
    SlotReading reading{sofar, number->End};
    reading.Means.Number = number->Value;
    reading.Means.Name = number->Digits;
    return {reading};
}

/// 118.3, or ONE ONE EIGHT DECIMAL THREE.
static Readings ReadFrequency(Words words, std::size_t at, const Instruction& sofar)
{
    SlotReading reading{sofar, at + 1};
    constexpr std::size_t Longest = 7;
    if (words[at].find('.') != std::string::npos && words[at].size() <= Longest) {
        reading.Means.Name = words[at];
        return {reading};
    }
    const auto whole = NumberAt(words, at);
    if (!whole || whole->End >= words.size() || words[whole->End] != "DECIMAL")
        return {};
    const auto part = NumberAt(words, whole->End + 1);
    if (!part)
        return {};
    reading.Means.Name = whole->Digits + '.' + part->Digits;
    reading.End = part->End;
    return {reading};
}

/// SEATTLE TOWER: up to two words before the kind of station.
static Readings ReadStation(Words words, std::size_t at, const Instruction& sofar)
{
    constexpr std::array<std::string_view, 12> Kinds{"TOWER",     "GROUND", "APPROACH", "DEPARTURE",
                                                     "CENTER",    "RADAR",  "CONTROL",  "DELIVERY",
                                                     "CLEARANCE", "UNICOM", "RAMP",     "DIRECTOR"};
    constexpr std::size_t Most = 3;
    for (std::size_t end = at; end < std::min(words.size(), at + Most); ++end)
        if (IsOneOf(words[end], Kinds))
            return {{sofar, end + 1}};
    return {};
}

static Readings ReadSide(Words words, std::size_t at, const Instruction& sofar)
{
    constexpr std::array<std::string_view, 8> Sides{"NORTH", "NORTHEAST", "EAST", "SOUTHEAST",
                                                    "SOUTH", "SOUTHWEST", "WEST", "NORTHWEST"};
    constexpr int Step = 45;
    const auto side = std::find(Sides.begin(), Sides.end(), words[at]);
    if (side == Sides.end())
        return {};
    SlotReading reading{sofar, at + 1};
    reading.Means.SideDeg = static_cast<int>(side - Sides.begin()) * Step;
    return {reading};
}

/// Words up to the next that begins an instruction: what is told, not asked for.
static Readings ReadDetails(Words words, std::size_t at, const Instruction& sofar)
{
    constexpr std::array<std::string_view, 34> Begins{
        "TURN",    "CLIMB",  "DESCEND",   "MAINTAIN", "FLY",    "REDUCE",   "INCREASE",  "SPEED", "CLEARED",
        "CONTACT", "SQUAWK", "HOLD",      "TAXI",     "CROSS",  "EXPECT",   "REPORT",    "SAY",   "PROCEED",
        "DIRECT",  "LINEUP", "GOAROUND",  "HEADING",  "STOP",   "CANCEL",   "WHEN",      "UNTIL", "LEFT",
        "RIGHT",   "RUNWAY", "DISREGARD", "VACATE",   "RESUME", "ALTITUDE", "CORRECTION"};
    SlotReading reading{sofar, at};
    while (reading.End < words.size() && !IsOneOf(words[reading.End], Begins))
        ++reading.End;
    return reading.End > at ? Readings{reading} : Readings{};
}

static Readings ReadMinutes(Words words, std::size_t at, const Instruction& sofar)
{
    constexpr int Longest = 10;
    Readings readings = ReadNumber(words, at, Instruction{}, 1, Longest);
    for (SlotReading& reading : readings)
        reading.Means = [&] {
            Instruction means = sofar;
            means.Minutes = reading.Means.Number;
            return means;
        }();
    return readings;
}

static Readings ReadLetter(Words words, std::size_t at, const Instruction& sofar)
{
    return LetterOf(words[at]) != '\0' ? Readings{{sofar, at + 1}} : Readings{};
}

Readings ReadSlot(std::string_view slot, Words words, std::size_t at, const Instruction& sofar)
{
    constexpr int MostAnything = 999999;
    if (at >= words.size())
        return {};
    if (slot == "turn")
        return ReadTurn(words, at, sofar);
    if (slot == "heading")
        return ReadHeading(words, at, sofar, false);
    if (slot == "course")
        return ReadHeading(words, at, sofar, true);
    if (slot == "degrees")
        return ReadNumber(words, at, sofar, 1, 360);
    if (slot == "circle")
        return ReadNumber(words, at, sofar, 360, 360);
    if (slot == "altitude")
        return ReadAltitude(words, at, sofar);
    if (slot == "speed")
        return ReadNumber(words, at, sofar, 30, 999);
    if (slot == "place")
        return ReadPlace(words, at, sofar);
    if (slot == "runway")
        return ReadRunway(words, at, sofar);
    if (slot == "taxiways")
        return ReadTaxiways(words, at, sofar);
    if (slot == "code")
        return ReadCode(words, at, sofar);
    if (slot == "frequency")
        return ReadFrequency(words, at, sofar);
    if (slot == "station")
        return ReadStation(words, at, sofar);
    if (slot == "side")
        return ReadSide(words, at, sofar);
    if (slot == "minutes")
        return ReadMinutes(words, at, sofar);
    if (slot == "miles")
        return ReadNumber(words, at, sofar, 1, 99);
    if (slot == "number")
        return ReadNumber(words, at, sofar, 0, MostAnything);
    if (slot == "letter")
        return ReadLetter(words, at, sofar);
    return slot == "details" ? ReadDetails(words, at, sofar) : Readings{};
}
} // namespace corvane
