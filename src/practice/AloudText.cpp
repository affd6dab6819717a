#include "practice/AloudText.h"

#include "core/Text.h"

#include <algorithm>
#include <array>
#include <vector>

namespace corvane {
static bool IsFigure(char c) noexcept
{
    return c >= '0' && c <= '9';
}

static bool IsCapital(char c) noexcept
{
    return c >= 'A' && c <= 'Z';
}

static std::string_view DigitWord(char digit) noexcept
{
    constexpr std::array<std::string_view, 10> Words{"zero", "one", "two",   "three", "four",
                                                     "five", "six", "seven", "eight", "niner"};
    return Words[static_cast<std::size_t>(digit - '0')];
}

static std::string_view LetterWord(char letter) noexcept
{
    constexpr std::array<std::string_view, 26> Words{
        "Alpha",  "Bravo", "Charlie", "Delta",  "Echo",     "Foxtrot", "Golf",   "Hotel",  "India",
        "Juliet", "Kilo",  "Lima",    "Mike",   "November", "Oscar",   "Papa",   "Quebec", "Romeo",
        "Sierra", "Tango", "Uniform", "Victor", "Whiskey",  "X-ray",   "Yankee", "Zulu"};
    return Words[static_cast<std::size_t>(letter - 'A')];
}

static void Append(std::string& text, std::string_view word)
{
    text += (text.empty() ? "" : " ") + std::string(word);
}

/// Capitals and figures one by one; a point between figures is said.
static std::string Spelled(std::string_view word)
{
    std::string text;
    for (const char c : word) {
        if (IsFigure(c))
            Append(text, DigitWord(c));
        else if (IsCapital(c))
            Append(text, LetterWord(c));
        else if (c == '.')
            Append(text, "decimal");
    }
    return text;
}

/// Feet as "one two thousand five hundred".
static std::string Altitude(std::string_view figures)
{
    constexpr std::size_t Thousands = 3;
    const std::string_view thousands = figures.substr(0, figures.size() - Thousands);
    const char hundreds = figures[figures.size() - Thousands];
    std::string text = Spelled(thousands) + " thousand";
    if (hundreds != '0')
        text += " " + std::string(DigitWord(hundreds)) + " hundred";
    return text;
}

static std::string Number(const std::string& figures, bool asCode)
{
    constexpr std::size_t Shortest = 4;
    constexpr std::size_t Longest = 5;
    const bool altitude = !asCode && figures.size() >= Shortest && figures.size() <= Longest &&
                          figures.ends_with("00") && figures.front() != '0';
    return altitude ? Altitude(figures) : Spelled(figures);
}

/// 16R, 9L: the side is a word.
static std::string Runway(std::string_view word)
{
    const char side = word.back();
    return Spelled(word.substr(0, word.size() - 1)) + (side == 'L' ? " left" : side == 'R' ? " right" : " center");
}

static bool IsRunway(std::string_view word) noexcept
{
    constexpr std::size_t Longest = 3;
    return word.size() > 1 && word.size() <= Longest && std::all_of(word.begin(), word.end() - 1, IsFigure) &&
           std::string_view("LRC").find(word.back()) != std::string_view::npos;
}

static bool IsFlightLevel(std::string_view word) noexcept
{
    return word.size() > 2 && word.starts_with("FL") && std::all_of(word.begin() + 2, word.end(), IsFigure);
}

/// A word without the punctuation that ends it, which a voice makes a pause of.
static std::string Word(std::string_view word, std::string_view before)
{
    const bool figures = std::any_of(word.begin(), word.end(), IsFigure);
    const bool capitals = std::all_of(word.begin(), word.end(), [](char c) { return IsCapital(c) || IsFigure(c); });
    if (IsRunway(word))
        return Runway(word);
    if (IsFlightLevel(word))
        return "flight level " + Spelled(word.substr(2));
    if (capitals && std::any_of(word.begin(), word.end(), IsCapital)) // ILS, KSEA, A, B1, N348UC
        return word == "ILS" ? "I L S" : Spelled(word);
    if (!figures)
        return std::string(word);
    std::string number;
    for (const char c : word)
        if (IsFigure(c) || c == '.')
            number += c;
    const bool asCode = before == "squawk" || before == "squawking" || before == "level";
    return Number(number, asCode);
}

/// A callsign: "Lantern 412" has its word said and its figures spelled, however many noughts end them.
static std::string Callsign(std::string_view name)
{
    std::string text;
    while (!name.empty()) {
        const std::string_view part = name.substr(0, name.find(' '));
        name.remove_prefix(std::min(name.size(), part.size() + 1));
        const bool isWord = std::none_of(part.begin(), part.end(), IsFigure) &&
                            std::any_of(part.begin(), part.end(), [](char c) { return c >= 'a' && c <= 'z'; });
        Append(text, isWord ? std::string(part) : Spelled(ToUpper(part)));
    }
    return text;
}

std::string AloudText(std::string_view line, std::string_view speaker)
{
    std::string text;
    std::string before;
    while (!line.empty()) {
        if (!speaker.empty() && line.starts_with(speaker)) {
            Append(text, Callsign(speaker));
            line.remove_prefix(speaker.size());
            continue;
        }
        const std::size_t end = std::min(line.find(' '), line.size());
        std::string_view word = line.substr(0, end);
        line.remove_prefix(std::min(line.size(), end + 1));
        const std::size_t kept = word.find_last_not_of(",.;:!?\"'()");
        const bool pauses = kept != std::string_view::npos && kept + 1 < word.size();
        word = word.substr(0, kept == std::string_view::npos ? 0 : kept + 1);
        word.remove_prefix(std::min(word.size(), word.find_first_not_of("\"'(")));
        std::string said = Word(word, before);
        std::erase_if(said, [](char c) { return static_cast<unsigned char>(c) < ' '; });
        if (!said.empty())
            Append(text, said + (pauses ? "," : ""));
        before = word;
    }
    return text;
}
} // namespace corvane
