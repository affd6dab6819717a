#include "practice/Addressee.h"

#include "practice/SpokenWords.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace corvane {
static bool HasDigit(std::string_view text) noexcept
{
    return std::any_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

static std::string Plain(std::string_view callsign)
{
    std::string plain;
    for (const std::string& word : TypedWords(callsign))
        plain += word;
    return plain;
}

/// A word of a callsign as it may be spoken: FOUR is 4, and CHARLIE is C.
static std::string Spoken(const std::string& word)
{
    if (const char digit = DigitOf(word); digit != '\0')
        return std::string(1, digit);
    const char letter = LetterOf(word);
    return letter != '\0' ? std::string(1, letter) : word;
}

namespace {
/// The words of a line from one on, as the callsign that they may spell.
struct SpelledName {
    std::string Name;
    std::size_t End = 0;
};
} // namespace

/// Every name that words from one on may spell, the longest first: as they are typed, and as they are spoken.
static std::vector<SpelledName> NamesFrom(std::span<const std::string> words, std::size_t begin)
{
    constexpr std::size_t MostWords = 8; // November and six more, and one to spare
    std::vector<SpelledName> names;
    std::string typed;
    std::string spoken;
    for (std::size_t end = begin; end < std::min(words.size(), begin + MostWords); ++end) {
        typed += words[end];
        spoken += Spoken(words[end]);
        names.insert(names.begin(), {typed, end + 1});
        if (spoken != typed)
            names.insert(names.begin(), {spoken, end + 1});
    }
    return names;
}

static std::string Without(std::span<const std::string> words, std::size_t from, std::size_t to)
{
    constexpr std::array<std::string_view, 2> Weights{"HEAVY", "SUPER"};
    if (to < words.size() && std::find(Weights.begin(), Weights.end(), words[to]) != Weights.end())
        ++to;
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i)
        if (i < from || i >= to)
            text += (text.empty() ? "" : " ") + words[i];
    return text;
}

static std::optional<Addressee> FindWhole(std::span<const std::string> words, std::span<const std::string> names)
{
    for (std::size_t begin = 0; begin < words.size(); ++begin)
        for (const SpelledName& spelled : NamesFrom(words, begin)) {
            const auto named = std::find(names.begin(), names.end(), spelled.Name);
            if (named != names.end())
                return Addressee{.Ambiguous = false,
                                 .Index = static_cast<std::size_t>(named - names.begin()),
                                 .Rest = Without(words, begin, spelled.End)};
        }
    return std::nullopt;
}

static bool IsPartOf(std::string_view part, std::string_view name) noexcept
{
    constexpr std::size_t ShortestBeginning = 3;
    constexpr std::size_t ShortestEnd = 2;
    constexpr std::size_t FewestFigures = 3;
    if (part.size() >= ShortestBeginning && name.starts_with(part))
        return true;
    if (!HasDigit(part) || part.size() < ShortestEnd)
        return false;
    const bool figuresAlone = std::all_of(part.begin(), part.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (name.ends_with(part) && (!figuresAlone || part.size() >= FewestFigures))
        return true;
    // N8UC for N348UC
    return part.size() > FewestFigures && part.front() == name.front() && name.ends_with(part.substr(1));
}

/// Whether a name is another but for one character: wrong, missing, too many, or exchanged with its neighbour.
static bool IsMisspelt(std::string_view typed, std::string_view name) noexcept
{
    constexpr std::size_t Shortest = 5;
    if (typed.size() < Shortest || !HasDigit(typed) || typed.size() > name.size() + 1 || name.size() > typed.size() + 1)
        return false;
    const auto [a, b] = std::mismatch(typed.begin(), typed.end(), name.begin(), name.end());
    const std::string_view left(a, typed.end());
    const std::string_view meant(b, name.end());
    if (left.size() > meant.size())
        return left.substr(1) == meant;
    if (left.size() < meant.size())
        return left == meant.substr(1);
    if (left.empty() || left.substr(1) == meant.substr(1))
        return true;
    return left.size() > 1 && left[0] == meant[1] && left[1] == meant[0] && left.substr(2) == meant.substr(2);
}

using Fits = bool (*)(std::string_view typed, std::string_view name) noexcept;

static std::optional<Addressee> FindFitting(const SpelledName& spelled, std::span<const std::string> names, Fits fits)
{
    std::optional<Addressee> found;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!fits(spelled.Name, names[i]))
            continue;
        if (found)
            found->Ambiguous = true;
        else
            found = Addressee{.Ambiguous = false, .Index = i, .Rest = {}};
    }
    return found;
}

/// "Cessna 8UC": a type of aircraft may stand before a part of the callsign.
static std::size_t WordsOfType(std::span<const std::string> words)
{
    constexpr std::array<std::string_view, 13> Types{"CESSNA", "SKYLANE", "SKYHAWK",   "MOONEY",  "BEECHCRAFT",
                                                     "KING",   "AIR",     "KINGAIR",   "CARAVAN", "LEARJET",
                                                     "BOEING", "BELL",    "HELICOPTER"};
    std::size_t count = 0;
    while (count < words.size() && std::find(Types.begin(), Types.end(), words[count]) != Types.end())
        ++count;
    return count;
}

std::optional<Addressee> FindAddressee(std::string_view line, std::span<const std::string> callsigns)
{
    constexpr std::size_t LongestLine = 600;
    const std::vector<std::string> words = TypedWords(line.substr(0, LongestLine));
    std::vector<std::string> names;
    names.reserve(callsigns.size());
    for (const std::string& callsign : callsigns)
        names.push_back(Plain(callsign));
    if (auto whole = FindWhole(words, names))
        return whole;
    const std::size_t begin = WordsOfType(words);
    for (const SpelledName& spelled : NamesFrom(words, begin))
        for (const auto fits : {IsPartOf, IsMisspelt})
            if (auto found = FindFitting(spelled, names, fits)) {
                found->Rest = Without(words, 0, spelled.End);
                return found;
            }
    return std::nullopt;
}
} // namespace corvane
