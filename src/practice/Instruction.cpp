#include "practice/Instruction.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace corvane {
static bool IsWordCharacter(char c) noexcept
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

static char Capital(char c) noexcept
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// The words of a line in capitals. Hyphens vanish inside a word (go-around, N-123AB stay one word); a comma between
/// digits does too (5,000); everything else that is no letter or digit parts words.
static std::vector<std::string> Words(std::string_view line)
{
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    std::vector<std::string> words(1);
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool inside = i > 0 && i + 1 < line.size();
        const bool joins =
            inside && ((line[i] == '-' && IsWordCharacter(line[i - 1]) && IsWordCharacter(line[i + 1])) ||
                       (line[i] == ',' && isDigit(line[i - 1]) && isDigit(line[i + 1])));
        if (joins)
            continue;
        if (IsWordCharacter(line[i]))
            words.back() += Capital(line[i]);
        else if (!words.back().empty())
            words.emplace_back();
    }
    if (words.back().empty())
        words.pop_back();
    return words;
}

static std::string Joined(std::span<const std::string> words, std::size_t without)
{
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i == without)
            continue;
        if (!text.empty())
            text += ' ';
        text += words[i];
    }
    return text;
}

static std::string CallsignWord(std::string_view callsign)
{
    std::string word;
    for (const char c : callsign)
        if (IsWordCharacter(c))
            word += Capital(c);
    return word;
}

static std::optional<Addressee> FindByBeginning(std::span<const std::string> words, std::span<const std::string> names)
{
    constexpr std::size_t ShortestBeginning = 3;
    if (words.empty() || words.front().size() < ShortestBeginning)
        return std::nullopt;
    std::optional<Addressee> found;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!names[i].starts_with(words.front()))
            continue;
        if (found)
            found->Ambiguous = true;
        else
            found = Addressee{.Ambiguous = false, .Index = i, .Rest = Joined(words, 0)};
    }
    return found;
}

std::optional<Addressee> FindAddressee(std::string_view line, std::span<const std::string> callsigns)
{
    const std::vector<std::string> words = Words(line);
    std::vector<std::string> names;
    names.reserve(callsigns.size());
    for (const std::string& callsign : callsigns)
        names.push_back(CallsignWord(callsign));
    for (std::size_t w = 0; w < words.size(); ++w) {
        const auto named = std::find(names.begin(), names.end(), words[w]);
        if (named != names.end())
            return Addressee{
                .Ambiguous = false, .Index = static_cast<std::size_t>(named - names.begin()), .Rest = Joined(words, w)};
    }
    return FindByBeginning(words, names);
}

namespace {
/// Walks the words of a line; every Read function takes its words or leaves them all.
class LineReader {
public:
    explicit LineReader(std::vector<std::string> words) : m_words(std::move(words)) {}

    [[nodiscard]] bool AtEnd() const noexcept { return m_at >= m_words.size(); }

    bool Take(std::string_view word)
    {
        if (AtEnd() || m_words[m_at] != word)
            return false;
        ++m_at;
        return true;
    }
    bool TakeAny(std::initializer_list<std::string_view> words)
    {
        return std::any_of(words.begin(), words.end(), [this](std::string_view word) { return Take(word); });
    }
    void Skip(std::initializer_list<std::string_view> words)
    {
        while (TakeAny(words)) {
        }
    }
    std::optional<std::string> TakeWord()
    {
        if (AtEnd())
            return std::nullopt;
        return m_words[m_at++];
    }
    /// A word of digits alone, at most six of them.
    std::optional<int> TakeNumber()
    {
        if (AtEnd() || m_words[m_at].size() > 6)
            return std::nullopt;
        const std::string& word = m_words[m_at];
        int number = 0;
        const auto read = std::from_chars(word.data(), word.data() + word.size(), number);
        if (read.ec != std::errc() || read.ptr != word.data() + word.size())
            return std::nullopt;
        ++m_at;
        return number;
    }

private:
    std::vector<std::string> m_words;
    std::size_t m_at = 0;
};
} // namespace

static std::optional<Instruction> ReadHeading(LineReader& line, HeadingTurn turn)
{
    line.Skip({"TURN", "FLY", "TO"});
    const bool named = line.TakeAny({"HEADING", "HDG"});
    if (!named && turn == HeadingTurn::Shorter)
        return std::nullopt;
    const auto degrees = line.TakeNumber();
    line.TakeAny({"DEGREES"});
    if (!degrees || *degrees > 360)
        return std::nullopt;
    return Instruction{
        .Kind = InstructionKind::Heading, .Number = *degrees == 0 ? 360 : *degrees, .Turn = turn, .Name = {}};
}

/// "FL180", "FL 180", "FLIGHT LEVEL 180" or feet.
static std::optional<int> ReadAltitude(LineReader& line)
{
    constexpr int HighestFt = 60000;
    constexpr int FeetPerLevel = 100;
    int unit = 1;
    if (line.Take("FLIGHT")) {
        if (!line.Take("LEVEL"))
            return std::nullopt;
        unit = FeetPerLevel;
    } else if (line.Take("FL"))
        unit = FeetPerLevel;
    const auto number = line.TakeNumber();
    line.TakeAny({"FEET", "FT"});
    if (!number || *number * unit > HighestFt)
        return std::nullopt;
    return *number * unit;
}

static std::optional<Instruction> ReadAltitudeChange(LineReader& line, int change)
{
    line.Skip({"AND", "MAINTAIN", "TO"});
    const auto feet = ReadAltitude(line);
    if (!feet)
        return std::nullopt;
    return Instruction{.Kind = InstructionKind::Altitude, .Number = *feet, .Change = change, .Name = {}};
}

static std::optional<Instruction> ReadSpeed(LineReader& line)
{
    line.Skip({"TO", "SPEED"});
    const auto knots = line.TakeNumber();
    line.TakeAny({"KNOTS", "KTS", "KT"});
    constexpr int FastestKt = 999;
    if (!knots || *knots > FastestKt)
        return std::nullopt;
    return Instruction{.Kind = InstructionKind::Speed, .Number = *knots, .Name = {}};
}

static std::optional<Instruction> ReadDirect(LineReader& line)
{
    line.Skip({"DIRECT", "TO"});
    const auto ident = line.TakeWord();
    if (!ident)
        return std::nullopt;
    return Instruction{.Kind = InstructionKind::Direct, .Name = *ident};
}

static std::optional<Instruction> ReadCleared(LineReader& line)
{
    line.Skip({"FOR", "THE", "AN", "A"});
    if (line.Take("DIRECT"))
        return ReadDirect(line);
    const bool ils = line.Take("ILS");
    line.Skip({"APPROACH", "VISUAL", "TO", "LAND", "RUNWAY", "RWY", "THE"});
    const auto runway = line.TakeWord();
    line.Skip({"APPROACH"});
    constexpr std::size_t LongestRunway = 3;
    const bool isRunway = runway && runway->size() <= LongestRunway && runway->front() >= '0' && runway->front() <= '9';
    if (!isRunway)
        return std::nullopt;
    return Instruction{.Kind = InstructionKind::Approach, .Ils = ils, .Name = *runway};
}

static std::optional<Instruction> ReadSay(LineReader& line)
{
    line.Skip({"YOUR", "AGAIN"});
    Instruction say{.Kind = InstructionKind::Say, .Name = {}};
    if (line.TakeAny({"ALTITUDE", "LEVEL"}))
        say.What = SayWhat::Altitude;
    else if (line.TakeAny({"HEADING", "HDG"}))
        say.What = SayWhat::Heading;
    else if (line.TakeAny({"SPEED", "AIRSPEED"}))
        say.What = SayWhat::Speed;
    else if (line.TakeAny({"POSITION"}))
        say.What = SayWhat::Position;
    else
        return std::nullopt;
    return say;
}

static std::optional<Instruction> ReadTurn(LineReader& line)
{
    if (line.Take("LEFT"))
        return ReadHeading(line, HeadingTurn::Left);
    if (line.Take("RIGHT"))
        return ReadHeading(line, HeadingTurn::Right);
    return ReadHeading(line, HeadingTurn::Shorter);
}

/// "go around", "hold", "resume own navigation": instructions without a value.
static std::optional<Instruction> ReadPlain(LineReader& line)
{
    if (line.TakeAny({"GOAROUND"}) || (line.Take("GO") && line.Take("AROUND")))
        return Instruction{.Kind = InstructionKind::GoAround, .Name = {}};
    if (line.Take("HOLD")) {
        line.Skip({"POSITION", "PRESENT", "AT", "OVER"});
        return Instruction{.Kind = InstructionKind::Hold, .Name = {}};
    }
    if (line.Take("RESUME")) {
        line.Skip({"OWN", "NAVIGATION", "NAV"});
        return Instruction{.Kind = InstructionKind::Resume, .Name = {}};
    }
    return std::nullopt;
}

static std::optional<Instruction> ReadInstruction(LineReader& line)
{
    if (line.TakeAny({"CLIMB", "CLIMBING"}))
        return ReadAltitudeChange(line, 1);
    if (line.TakeAny({"DESCEND", "DESCENT"}))
        return ReadAltitudeChange(line, -1);
    if (line.TakeAny({"MAINTAIN", "ALTITUDE"}))
        return ReadAltitudeChange(line, 0);
    if (line.TakeAny({"SPEED", "REDUCE", "INCREASE"}))
        return ReadSpeed(line);
    if (line.TakeAny({"DIRECT", "PROCEED"}))
        return ReadDirect(line);
    if (line.Take("CLEARED"))
        return ReadCleared(line);
    if (line.Take("SAY"))
        return ReadSay(line);
    if (auto plain = ReadPlain(line))
        return plain;
    line.Skip({"TURN"});
    return ReadTurn(line);
}

/// FL180 is two words to the reader.
static std::vector<std::string> WithLevelsParted(std::vector<std::string> words)
{
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i].size() <= 2 || !words[i].starts_with("FL") || words[i][2] < '0' || words[i][2] > '9')
            continue;
        const std::string level = words[i].substr(2);
        words[i] = "FL";
        words.insert(words.begin() + static_cast<std::ptrdiff_t>(i) + 1, level);
    }
    return words;
}

ParsedLine ParseInstructions(std::string_view line)
{
    constexpr std::size_t MostInstructions = 8; // no controller says more; a hostile line may
    ParsedLine parsed;
    LineReader reader(WithLevelsParted(Words(line)));
    reader.Skip({"PLEASE", "AND", "THEN"});
    while (!reader.AtEnd()) {
        auto instruction = ReadInstruction(reader);
        if (!instruction || parsed.Instructions.size() == MostInstructions)
            return {.Instructions = {}, .Understood = false};
        parsed.Instructions.push_back(*std::move(instruction));
        reader.Skip({"PLEASE", "AND", "THEN", "NOW"});
    }
    parsed.Understood = !parsed.Instructions.empty();
    return parsed;
}
} // namespace corvane
