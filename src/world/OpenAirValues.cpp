#include "world/OpenAirValues.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "core/Text.h"
#include "world/RowReader.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane {
static bool IsDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

static void SkipSeparators(std::string_view& text, std::string_view separators) noexcept
{
    text.remove_prefix(std::min(text.find_first_not_of(separators), text.size()));
}

/// Takes the digits, points and colons at the front, with a sign before them.
static std::string_view TakeFigures(std::string_view& text) noexcept
{
    std::size_t length = !text.empty() && (text.front() == '-' || text.front() == '+') ? 1 : 0;
    while (length < text.size() && (IsDigit(text[length]) || text[length] == '.' || text[length] == ':'))
        ++length;
    const std::string_view figures = text.substr(0, length);
    text.remove_prefix(length);
    return figures;
}

/// Degrees of whole degrees, minutes and seconds that stand apart or run together in one number.
static std::optional<double> RunTogether(std::string_view figures) noexcept
{
    constexpr std::size_t MostDegreeDigits = 3;
    constexpr std::size_t MostMinuteDigits = 5; // DDDMM
    constexpr std::size_t MostSecondDigits = 7; // DDDMMSS
    constexpr double MostMinutes = 60;          // a 60 is seen, and means the next degree
    const std::optional<double> value = NumberOf(figures);
    const std::size_t digits = std::min(figures.find('.'), figures.size());
    if (!value || digits <= MostDegreeDigits || !IsDigit(figures.front()))
        return value;
    if (digits > MostSecondDigits)
        return std::nullopt;
    const bool hasSeconds = digits > MostMinuteDigits;
    const double minutes = hasSeconds ? std::floor(*value / 100) : *value;
    const double seconds = hasSeconds ? *value - minutes * 100 : 0;
    const double degrees = std::floor(minutes / 100);
    const double onlyMinutes = minutes - degrees * 100;
    if (onlyMinutes > MostMinutes || seconds > MostMinutes)
        return std::nullopt;
    return degrees + onlyMinutes / 60 + seconds / 3600;
}

static std::optional<double> Degrees(std::string_view figures) noexcept
{
    if (figures.find(':') == std::string_view::npos)
        return RunTogether(figures);
    constexpr std::array<double, 3> Units = {1, 60, 3600};
    double degrees = 0;
    std::size_t unit = 0;
    for (bool more = true; more; ++unit) {
        const std::size_t colon = figures.find(':');
        more = colon != std::string_view::npos;
        const std::string_view part = figures.substr(0, colon);
        const std::optional<double> value = part.empty() || !IsDigit(part.front()) ? std::nullopt : NumberOf(part);
        if (!value || unit >= Units.size() || (unit > 0 && *value > 60))
            return std::nullopt;
        degrees += *value / Units[unit];
        figures.remove_prefix(more ? colon + 1 : figures.size());
    }
    return degrees;
}

namespace {
/// A latitude or a longitude, and whether a letter told which.
struct Angle {
    double Degrees = 0;
    bool HasLetter = false;
};
} // namespace

static std::optional<Angle> TakeAngle(std::string_view& text, char positive, char negative, double largest)
{
    SkipSeparators(text, " \t");
    const std::string_view figures = TakeFigures(text);
    const std::optional<double> degrees = Degrees(figures);
    SkipSeparators(text, " \t");
    const char letter = text.empty() ? ' ' : ToUpper(text.substr(0, 1)).front();
    const bool hasLetter = letter == positive || letter == negative;
    if (hasLetter)
        text.remove_prefix(1);
    else if (!text.empty() && !IsDigit(letter) && letter != '-' && letter != '+' && letter != ',')
        return std::nullopt;
    if (!degrees || std::abs(*degrees) > largest || (hasLetter && !IsDigit(figures.front())))
        return std::nullopt;
    return Angle{letter == negative ? -*degrees : *degrees, hasLetter};
}

std::optional<LatLon> TakePlace(std::string_view& text)
{
    const std::optional<Angle> lat = TakeAngle(text, 'N', 'S', 90);
    SkipSeparators(text, " \t,");
    const std::optional<Angle> lon = TakeAngle(text, 'E', 'W', 180);
    SkipSeparators(text, " \t,");
    if (!lat || !lon || lat->HasLetter != lon->HasLetter)
        return std::nullopt;
    return LatLon{lat->Degrees, lon->Degrees};
}

std::optional<LatLon> OnePlace(std::string_view text)
{
    const std::optional<LatLon> place = TakePlace(text);
    return text.empty() ? place : std::nullopt;
}

std::optional<std::vector<double>> NumberList(std::string_view text)
{
    std::vector<double> numbers;
    for (SkipSeparators(text, " \t,"); !text.empty(); SkipSeparators(text, " \t,")) {
        const std::size_t length = std::min(text.find_first_of(" \t,"), text.size());
        const std::optional<double> number = NumberOf(text.substr(0, length));
        if (!number)
            return std::nullopt;
        numbers.push_back(*number);
        text.remove_prefix(length);
    }
    return numbers;
}

/// Takes a word of letters off the front, and the blanks behind it.
static std::string_view TakeWord(std::string_view& text) noexcept
{
    std::size_t length = 0;
    while (length < text.size() && text[length] >= 'A' && text[length] <= 'Z')
        ++length;
    const std::string_view word = text.substr(0, length);
    text.remove_prefix(length);
    SkipSeparators(text, " \t");
    return word;
}

template <std::size_t Count>
static bool IsOneOf(std::string_view word, const std::array<std::string_view, Count>& words) noexcept
{
    return std::ranges::find(words, word) != words.end();
}

/// Whether nothing but words that say what a height is above is left.
static bool OnlyReferences(std::string_view text) noexcept
{
    constexpr std::array<std::string_view, 10> References = {"MSL",  "AMSL", "AGL", "GND", "SFC",
                                                             "ASFC", "STD",  "QNH", "ALT", "QNE"};
    while (!text.empty()) {
        if (!IsOneOf(TakeWord(text), References))
            return false;
    }
    return true;
}

/// What is left of a limit behind its number: metres or feet, and the reference; the factor that makes it feet.
static std::optional<double> FeetFactor(std::string_view unit)
{
    constexpr std::array<std::string_view, 4> Feet = {"FT", "F", "FEET", "FTS"};
    constexpr std::array<std::string_view, 5> Metres = {"M", "MT", "MTS", "METERS", "METRES"};
    std::string_view rest = unit;
    const std::string_view word = TakeWord(rest);
    if (IsOneOf(word, Feet) && OnlyReferences(rest))
        return 1;
    if (IsOneOf(word, Metres) && OnlyReferences(rest))
        return 1 / MetresPerFoot;
    if (unit.starts_with("FT") && OnlyReferences(unit.substr(2))) // run together: 3500FTAMSL
        return 1;
    return OnlyReferences(unit) ? std::optional<double>(1) : std::nullopt;
}

std::optional<std::int32_t> LimitFt(std::string_view text)
{
    constexpr std::int32_t Unlimited = 99999;
    constexpr std::size_t MostLevelDigits = 4;
    constexpr double HighestFt = 999999;
    constexpr std::array<std::string_view, 2> Ground = {"GND", "SFC"};
    constexpr std::array<std::string_view, 4> NoLimit = {"UNL", "UNLIM", "UNLIMITED", "UNLTD"};
    const std::string upper = ToUpper(text);
    std::string_view rest = upper;
    SkipSeparators(rest, " \t");
    const std::string_view word = TakeWord(rest);
    if (IsOneOf(word, Ground) && OnlyReferences(rest))
        return 0;
    if (IsOneOf(word, NoLimit) && rest.empty())
        return Unlimited;
    std::size_t length = 0;
    while (length < rest.size() && (IsDigit(rest[length]) || rest[length] == '.'))
        ++length;
    const std::optional<double> number = NumberOf(rest.substr(0, length));
    const bool whole = rest.substr(0, length).find('.') == std::string_view::npos;
    rest.remove_prefix(length);
    SkipSeparators(rest, " \t");
    if (!number)
        return std::nullopt;
    if (word == "FL" && whole && length <= MostLevelDigits && OnlyReferences(rest))
        return RoundTo<std::int32_t>(*number * 100);
    const std::optional<double> factor = word.empty() ? FeetFactor(rest) : std::nullopt;
    if (!factor)
        return std::nullopt;
    const double feet = RoundHalfEven(*factor == 1 ? *number : *number / MetresPerFoot);
    return feet <= HighestFt ? std::optional(RoundTo<std::int32_t>(feet)) : std::nullopt;
}

std::optional<std::string> AirspaceFrequency(std::string_view text)
{
    constexpr double HighestMhz = 999.999;
    SkipSeparators(text, " \t");
    if (text.empty())
        return std::string();
    const std::string_view figures = TakeFigures(text);
    SkipSeparators(text, " \t");
    const std::optional<double> mhz = NumberOf(figures);
    if (!mhz || (!text.empty() && ToUpper(text) != "MHZ"))
        return std::nullopt;
    return *mhz <= 0 || *mhz > HighestMhz ? std::string() : NumberText(*mhz) + " Mhz";
}
} // namespace corvane
