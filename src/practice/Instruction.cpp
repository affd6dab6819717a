#include "practice/Instruction.h"

#include "practice/PhraseMatch.h"
#include "practice/SpokenWords.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvane {
namespace {
/// Reads the phrases of a line one after the other.
class LineReading {
public:
    explicit LineReading(std::vector<std::string> words) : m_words(std::move(words)) {}

    std::optional<std::vector<Instruction>> Read();

private:
    bool ReadPhrase();
    bool ReadCorrection();
    bool Add(Instruction instruction, std::size_t from);
    void SkipCourtesies();

    std::vector<std::string> m_words;
    std::size_t m_at = 0;
    std::size_t m_lastFrom = 0; ///< where the phrase before began
    std::vector<Instruction> m_said;
    Moment m_when; ///< of the instruction that is to come
};
} // namespace

void LineReading::SkipCourtesies()
{
    constexpr std::array<std::string_view, 10> Courtesies{"PLEASE", "PLS", "AND", "THEN",  "NOW",
                                                          "YOU",    "CAN", "MAY", "COULD", "ALSO"};
    while (m_at < m_words.size() && std::find(Courtesies.begin(), Courtesies.end(), m_words[m_at]) != Courtesies.end())
        ++m_at;
}

bool LineReading::Add(Instruction instruction, std::size_t from)
{
    constexpr std::size_t MostInstructions = 8; // no controller says more; a hostile line may
    m_lastFrom = from;
    if (instruction.Kind == InstructionKind::Disregard && !m_said.empty()) {
        m_said.clear();
        return true;
    }
    if (instruction.Kind == InstructionKind::When) {
        m_when = std::move(instruction.When);
        return true;
    }
    if (instruction.Kind == InstructionKind::Until) {
        if (m_said.empty())
            return false;
        m_said.back().Until = std::move(instruction.When);
        return true;
    }
    if (m_when.IsSet())
        instruction.When = std::exchange(m_when, {});
    m_said.push_back(std::move(instruction));
    return m_said.size() <= MostInstructions;
}

/// "turn left heading 270, correction 280": another number for the phrase before, or another phrase in its place.
bool LineReading::ReadCorrection()
{
    if (m_said.empty())
        return false;
    const std::size_t from = m_at + 1;
    if (const auto other = LongestPhraseAt(m_words, from)) {
        m_said.pop_back();
        m_at = other->End;
        return Add(other->Means, from);
    }
    std::vector<std::string> corrected(m_words.begin() + static_cast<std::ptrdiff_t>(m_lastFrom),
                                       m_words.begin() + static_cast<std::ptrdiff_t>(m_at));
    std::size_t number = 0;
    while (number < corrected.size() && !NumberAt(corrected, number))
        ++number;
    corrected.resize(number);
    corrected.insert(corrected.end(), m_words.begin() + static_cast<std::ptrdiff_t>(from), m_words.end());
    const auto phrase = LongestPhraseAt(corrected, 0);
    if (!phrase || phrase->End <= number)
        return false;
    m_said.pop_back();
    m_at = from + phrase->End - number;
    return Add(phrase->Means, m_lastFrom);
}

bool LineReading::ReadPhrase()
{
    if (m_words[m_at] == "CORRECTION")
        return ReadCorrection();
    auto phrase = LongestPhraseAt(m_words, m_at);
    if (!phrase)
        return false;
    const std::size_t from = std::exchange(m_at, phrase->End);
    return Add(std::move(phrase->Means), from);
}

std::optional<std::vector<Instruction>> LineReading::Read()
{
    SkipCourtesies();
    while (m_at < m_words.size()) {
        if (!ReadPhrase())
            return std::nullopt;
        SkipCourtesies();
    }
    if (m_said.empty())
        return std::nullopt;
    if (m_when.IsSet()) { // "heading 270 when passing 4000"
        if (m_said.back().When.IsSet())
            return std::nullopt;
        m_said.back().When = std::move(m_when);
    }
    return std::move(m_said);
}

ParsedLine ParseInstructions(std::string_view line)
{
    constexpr std::size_t LongestLine = 600; // characters; more than a radio call of eight instructions takes
    if (line.size() > LongestLine)
        return {.Instructions = {}, .Understood = false};
    auto said = LineReading(MeantWords(TypedWords(line))).Read();
    if (!said)
        return {.Instructions = {}, .Understood = false};
    return {.Instructions = *std::move(said), .Understood = true};
}
} // namespace corvane
