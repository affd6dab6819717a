#include "practice/PhraseMatch.h"

#include "practice/PhraseSlots.h"

#include <algorithm>

namespace corvane {
std::string_view TakeWording(std::string_view& wordings) noexcept
{
    const std::size_t end = std::min(wordings.find(';'), wordings.size());
    std::string_view wording = wordings.substr(0, end);
    wordings.remove_prefix(std::min(end + 1, wordings.size()));
    while (wording.starts_with(' '))
        wording.remove_prefix(1);
    return wording;
}

std::string_view TakeElement(std::string_view& wording) noexcept
{
    const std::size_t end = std::min(wording.find(' '), wording.size());
    const std::string_view element = wording.substr(0, end);
    wording.remove_prefix(std::min(end + 1, wording.size()));
    return element;
}

/// Whether a word in capitals is one as the table writes it: in small letters, "~" where words are joined.
static bool IsWord(std::string_view word, std::string_view written) noexcept
{
    std::size_t at = 0;
    for (const char c : written) {
        if (c == '~')
            continue;
        const char capital = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        if (at == word.size() || word[at++] != capital)
            return false;
    }
    return at == word.size();
}

static bool IsOneOfWords(std::string_view word, std::string_view alternatives) noexcept
{
    while (!alternatives.empty()) {
        const std::size_t end = std::min(alternatives.find('|'), alternatives.size());
        if (IsWord(word, alternatives.substr(0, end)))
            return true;
        alternatives.remove_prefix(std::min(end + 1, alternatives.size()));
    }
    return false;
}

namespace {
/// Tries every way in which words follow a wording, and keeps the longest. A wording has a dozen elements, each of
/// which takes a word or is left out: the work does not grow with the line.
class WordingWalk {
public:
    explicit WordingWalk(std::span<const std::string> words) : m_words(words) {}

    void Walk(std::string_view wording, std::size_t at, const Instruction& sofar)
    {
        if (wording.empty()) {
            if (!Best || at > Best->End)
                Best = PhraseMatch{sofar, at};
            return;
        }
        std::string_view element = TakeElement(wording);
        const bool optional = element.starts_with('?');
        if (optional)
            element.remove_prefix(1);
        if (element.starts_with('{')) {
            for (const SlotReading& reading : ReadSlot(element.substr(1, element.size() - 2), m_words, at, sofar))
                Walk(wording, reading.End, reading.Means);
        } else if (at < m_words.size() && IsOneOfWords(m_words[at], element))
            Walk(wording, at + 1, sofar);
        if (optional)
            Walk(wording, at, sofar);
    }

    std::optional<PhraseMatch> Best;

private:
    std::span<const std::string> m_words;
};
} // namespace

/// What the words alone say, before any slot is read.
static Instruction Begin(const Phrase& phrase)
{
    Instruction instruction{.Kind = phrase.Kind, .ReadBack = phrase.ReadBack};
    switch (phrase.Kind) {
    case InstructionKind::TurnBy: instruction.Number = phrase.Variant; break;
    case InstructionKind::Altitude: instruction.Change = phrase.Variant; break;
    case InstructionKind::Approach:
    case InstructionKind::Expect: instruction.Ils = phrase.Variant != 0; break;
    case InstructionKind::TouchAndGo: instruction.Change = phrase.Variant; break;
    case InstructionKind::Cancel: instruction.Cancels = static_cast<CancelWhat>(phrase.Variant); break;
    case InstructionKind::Say: instruction.What = static_cast<SayWhat>(phrase.Variant); break;
    case InstructionKind::Report:
    case InstructionKind::When:
    case InstructionKind::Until: instruction.When.At = static_cast<Moment::Kind>(phrase.Variant); break;
    default: break;
    }
    return instruction;
}

std::optional<PhraseMatch> LongestPhraseAt(std::span<const std::string> words, std::size_t at)
{
    std::optional<PhraseMatch> longest;
    for (const Phrase& phrase : PhraseTable())
        for (std::string_view wordings = phrase.Wordings; !wordings.empty();) {
            WordingWalk walk(words);
            walk.Walk(TakeWording(wordings), at, Begin(phrase));
            if (walk.Best && walk.Best->End > (longest ? longest->End : at))
                longest = std::move(walk.Best);
        }
    return longest;
}
} // namespace corvane
