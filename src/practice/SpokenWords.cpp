#include "practice/SpokenWords.h"

#include "core/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace corvane {
static bool IsDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}
static bool IsWordCharacter(char c) noexcept
{
    return IsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// A comma belongs to a number where three digits, and no more, follow it.
static bool GroupsThousands(std::string_view line, std::size_t comma) noexcept
{
    constexpr std::size_t Group = 3;
    if (comma == 0 || !IsDigit(line[comma - 1]) || line.size() < comma + 1 + Group)
        return false;
    const std::string_view group = line.substr(comma + 1, Group);
    const bool more = line.size() > comma + 1 + Group && IsDigit(line[comma + 1 + Group]);
    return std::all_of(group.begin(), group.end(), IsDigit) && !more;
}

std::vector<std::string> TypedWords(std::string_view line)
{
    std::vector<std::string> words(1);
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool digitNext = i + 1 < line.size() && IsDigit(line[i + 1]);
        const bool afterDigit = i > 0 && IsDigit(line[i - 1]);
        const bool afterWord = i > 0 && IsWordCharacter(line[i - 1]);
        if (line[i] == '\'' || (line[i] == ',' && GroupsThousands(line, i)))
            continue;
        const bool point = line[i] == '.' && afterDigit && digitNext;
        const bool minus = line[i] == '-' && !afterWord && digitNext && words.back().empty();
        if (IsWordCharacter(line[i]) || point || minus)
            words.back() += line[i];
        else if (!words.back().empty())
            words.emplace_back();
    }
    if (words.back().empty())
        words.pop_back();
    for (std::string& word : words)
        word = ToUpper(word);
    return words;
}

namespace {
struct Spelling {
    std::string_view Typed; ///< words in capitals
    std::string_view Meant;
};
} // namespace

// Longer ones before those that they begin with. A star stands for a zero into which a digit may be said.
static constexpr std::array Spellings{
    Spelling{"FLIGHT LEVEL", "FL"},
    Spelling{"HOLDING POINT", "HOLDINGPOINT"},
    Spelling{"I L S", "ILS"},
    Spelling{"GO AROUND", "GOAROUND"},
    Spelling{"TAKE OFF", "TAKEOFF"},
    Spelling{"PUSH BACK", "PUSHBACK"},
    Spelling{"LINE UP", "LINEUP"},
    Spelling{"START UP", "STARTUP"},
    Spelling{"STAND BY", "STANDBY"},
    Spelling{"HAND OFF", "HANDOFF"},
    Spelling{"READ BACK", "READBACK"},
    Spelling{"O CLOCK", "OCLOCK"},
    Spelling{"NORTH EAST", "NORTHEAST"},
    Spelling{"NORTH WEST", "NORTHWEST"},
    Spelling{"SOUTH EAST", "SOUTHEAST"},
    Spelling{"SOUTH WEST", "SOUTHWEST"},
    Spelling{"T L", "TURN LEFT"},
    Spelling{"T R", "TURN RIGHT"},
    Spelling{"C M", "CLIMB MAINTAIN"},
    Spelling{"D M", "DESCEND MAINTAIN"},
    Spelling{"TLH", "TURN LEFT HEADING"},
    Spelling{"TRH", "TURN RIGHT HEADING"},
    Spelling{"LUAW", "LINEUP AND WAIT"},
    Spelling{"HDG", "HEADING"},
    Spelling{"RWY", "RUNWAY"},
    Spelling{"SPD", "SPEED"},
    Spelling{"ALT", "ALTITUDE"},
    Spelling{"DCT", "DIRECT"},
    Spelling{"FT", "FEET"},
    Spelling{"KTS", "KNOTS"},
    Spelling{"KT", "KNOTS"},
    Spelling{"DEG", "DEGREES"},
    Spelling{"NM", "MILES"},
    Spelling{"MILE", "MILES"},
    Spelling{"MIN", "MINUTES"},
    Spelling{"MINUTE", "MINUTES"},
    Spelling{"CLRD", "CLEARED"},
    Spelling{"CLEAR", "CLEARED"},
    Spelling{"APCH", "APPROACH"},
    Spelling{"MANTAIN", "MAINTAIN"},
    Spelling{"DECEND", "DESCEND"},
    Spelling{"LOC", "LOCALIZER"},
    Spelling{"LOCALISER", "LOCALIZER"},
    Spelling{"CENTRE", "CENTER"},
    Spelling{"TWR", "TOWER"},
    Spelling{"POINT", "DECIMAL"},
    Spelling{"K", "THOUSAND"},
    Spelling{"ZERO", "0"},
    Spelling{"ONE", "1"},
    Spelling{"TWO", "2"},
    Spelling{"THREE", "3"},
    Spelling{"TREE", "3"},
    Spelling{"FOUR", "4"},
    Spelling{"FOWER", "4"},
    Spelling{"FIVE", "5"},
    Spelling{"FIFE", "5"},
    Spelling{"SIX", "6"},
    Spelling{"SEVEN", "7"},
    Spelling{"EIGHT", "8"},
    Spelling{"AIT", "8"},
    Spelling{"NINE", "9"},
    Spelling{"NINER", "9"},
    Spelling{"TEN", "10"},
    Spelling{"ELEVEN", "11"},
    Spelling{"TWELVE", "12"},
    Spelling{"FIFTEEN", "15"},
    Spelling{"TWENTY", "2*"},
    Spelling{"THIRTY", "3*"},
    Spelling{"FORTY", "4*"},
    Spelling{"FIFTY", "5*"},
    Spelling{"SIXTY", "6*"},
    Spelling{"SEVENTY", "7*"},
    Spelling{"EIGHTY", "8*"},
    Spelling{"NINETY", "9*"},
};

static constexpr std::array<std::string_view, 7> UnitsBefore{"FL", "HDG", "HEADING", "RWY", "RUNWAY", "ILS", "SQUAWK"};
static constexpr std::array<std::string_view, 11> UnitsAfter{"FT",  "FEET", "KT", "KTS", "KNOTS", "NM",
                                                             "DEG", "DME",  "K",  "MIN", "MILES"};

/// FL180 and 3000FT are two words; 16R and N123AB are one.
static std::vector<std::string> WithUnitsParted(std::span<const std::string> typed)
{
    std::vector<std::string> words;
    for (const std::string& word : typed) {
        const auto firstDigit =
            static_cast<std::size_t>(std::find_if(word.begin(), word.end(), IsDigit) - word.begin());
        const auto lastDigits = static_cast<std::size_t>(
            std::find_if(word.begin(), word.end(), [](char c) { return c >= 'A' && c <= 'Z'; }) - word.begin());
        const std::string_view text = word;
        const auto is = [](const auto& units, std::string_view unit) {
            return std::find(units.begin(), units.end(), unit) != units.end();
        };
        std::size_t cut = 0;
        if (firstDigit > 0 && firstDigit < word.size() && is(UnitsBefore, text.substr(0, firstDigit)))
            cut = firstDigit;
        else if (lastDigits > 0 && lastDigits < word.size() && is(UnitsAfter, text.substr(lastDigits)))
            cut = lastDigits;
        if (cut > 0)
            words.emplace_back(text.substr(0, cut));
        words.emplace_back(text.substr(cut));
    }
    return words;
}

/// How many of the words from one on a spelling takes; 0 when it is another.
static std::size_t Takes(std::string_view typed, std::span<const std::string> words)
{
    std::size_t count = 0;
    while (!typed.empty()) {
        const std::size_t end = std::min(typed.find(' '), typed.size());
        if (count == words.size() || words[count] != typed.substr(0, end))
            return 0;
        ++count;
        typed.remove_prefix(std::min(end + 1, typed.size()));
    }
    return count;
}

static void AppendWords(std::vector<std::string>& words, std::string_view text)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        words.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::vector<std::string> MeantWords(std::span<const std::string> typed)
{
    const std::vector<std::string> parted = WithUnitsParted(typed);
    std::vector<std::string> words;
    for (std::size_t at = 0; at < parted.size();) {
        const std::span<const std::string> left = std::span(parted).subspan(at);
        const auto spelling = std::find_if(Spellings.begin(), Spellings.end(),
                                           [left](const Spelling& s) { return Takes(s.Typed, left) > 0; });
        if (spelling == Spellings.end()) {
            words.push_back(parted[at++]);
            continue;
        }
        at += Takes(spelling->Typed, left);
        AppendWords(words, spelling->Meant);
    }
    return words;
}

static bool IsNumber(std::string_view word) noexcept
{
    return !word.empty() && std::all_of(word.begin(), word.end(), IsDigit);
}

static bool IsTens(std::string_view word) noexcept
{
    return word.size() == 2 && IsDigit(word.front()) && word.back() == '*';
}

/// A figure of one digit, or tens with or without a digit said into them; nothing for others.
static std::optional<std::string> SpokenFigure(std::span<const std::string> words, std::size_t& at)
{
    if (at >= words.size())
        return std::nullopt;
    if (words[at].size() == 1 && IsDigit(words[at].front()))
        return words[at++];
    if (!IsTens(words[at]))
        return std::nullopt;
    std::string figure(1, words[at++].front());
    const bool unit = at < words.size() && words[at].size() == 1 && IsDigit(words[at].front()) && words[at] != "0";
    figure += unit ? words[at++].front() : '0';
    return figure;
}

std::optional<SpokenNumber> NumberAt(std::span<const std::string> words, std::size_t at)
{
    constexpr std::size_t MostDigits = 6;
    SpokenNumber number{.Digits = {}, .Value = 0, .End = at};
    if (at < words.size() && words[at].size() > 1 && IsNumber(words[at]))
        number.Digits = words[number.End++];
    else
        while (number.Digits.size() < MostDigits)
            if (const auto figure = SpokenFigure(words, number.End))
                number.Digits += *figure;
            else
                break;
    if (number.Digits.empty() || number.Digits.size() > MostDigits)
        return std::nullopt;
    std::from_chars(number.Digits.data(), number.Digits.data() + number.Digits.size(), number.Value);
    constexpr int MostHundreds = 99;
    if (number.End < words.size() && words[number.End] == "HUNDRED" && number.Value <= MostHundreds) {
        number.Value *= 100;
        number.Digits += "00";
        ++number.End;
    }
    return number;
}

char DigitOf(std::string_view word) noexcept
{
    if (word.size() == 1 && IsDigit(word.front()))
        return word.front();
    const auto spelling =
        std::find_if(Spellings.begin(), Spellings.end(), [word](const Spelling& s) { return s.Typed == word; });
    const bool digit = spelling != Spellings.end() && spelling->Meant.size() == 1 && IsDigit(spelling->Meant.front());
    return digit ? spelling->Meant.front() : '\0';
}

char LetterOf(std::string_view word) noexcept
{
    constexpr std::array<std::string_view, 28> Alphabet{
        "ALPHA",   "BRAVO",  "CHARLIE", "DELTA",    "ECHO",   "FOXTROT", "GOLF",   "HOTEL",  "INDIA",  "JULIET",
        "KILO",    "LIMA",   "MIKE",    "NOVEMBER", "OSCAR",  "PAPA",    "QUEBEC", "ROMEO",  "SIERRA", "TANGO",
        "UNIFORM", "VICTOR", "WHISKEY", "XRAY",     "YANKEE", "ZULU",    "ALFA",   "JULIETT"};
    if (word.size() == 1 && word.front() >= 'A' && word.front() <= 'Z')
        return word.front();
    const bool known = std::find(Alphabet.begin(), Alphabet.end(), word) != Alphabet.end();
    return known ? word.front() : '\0';
}
} // namespace corvane
