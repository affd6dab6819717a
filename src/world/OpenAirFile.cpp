#include "world/OpenAirFile.h"

#include "core/Text.h"
#include "world/OpenAirOutline.h"
#include "world/OpenAirValues.h"
#include "world/RowReader.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane {
namespace {
/// An airspace while its commands are read.
class AirspaceDraft {
public:
    AirspaceDraft(std::string airspaceClass, std::int64_t line);

    /// Takes a command; the line is for the encoding of names. What cannot be read is noted and makes the airspace an
    /// unreadable one. False where the word is no command.
    bool Take(std::string_view command, std::string_view value, std::string_view line);

    /// The record, or why there is none.
    Result<AirspaceRecord> Finish();
    [[nodiscard]] const std::string& Class() const noexcept { return m_class; }
    [[nodiscard]] const std::string& Type() const noexcept { return m_type; }
    [[nodiscard]] const std::string& Name() const noexcept { return m_airspace.Name; }
    [[nodiscard]] std::int64_t Line() const noexcept { return m_line; }
    [[nodiscard]] std::optional<std::string_view> Kind() const { return OpenAirKind(m_class, m_type); }

private:
    void TakeVariable(std::string_view value);
    void TakeArc(std::string_view value);
    void TakeArcBetween(std::string_view value);
    void TakeCircle(std::string_view value);
    void TakeLimit(std::optional<std::int32_t>& limit, std::string_view value, const char* what);
    void Refuse(std::string why);

    std::string m_class;
    std::string m_type;
    std::int64_t m_line;
    AirspaceRecord m_airspace;
    std::optional<std::int32_t> m_floor;
    std::optional<std::int32_t> m_ceiling;
    OpenAirOutline m_outline;
    std::string m_whyNot; ///< the first command that could not be read
};
} // namespace

static std::string_view Trimmed(std::string_view text) noexcept
{
    constexpr std::string_view Blanks = " \t";
    const std::size_t start = std::min(text.find_first_not_of(Blanks), text.size());
    return text.substr(start, text.find_last_not_of(Blanks) + 1 - start);
}

static bool IsClass(std::string_view text, char first, char last) noexcept
{
    return text.size() == 1 && text.front() >= first && text.front() <= last;
}

std::optional<std::string_view> OpenAirKind(std::string_view airspaceClass, std::string_view type)
{
    const bool typed = !type.empty() && type != "NONE";
    const std::string_view decisive = typed ? type : airspaceClass;
    if (decisive == "FIR" || decisive == "UIR" || decisive == "ACC_SECTOR" || decisive == "ACCSEC")
        return HighSectorKind;
    if (decisive == "TMA" || decisive == "CTA")
        return TraconKind;
    const bool zone = decisive == "CTR";
    if (typed && !zone)
        return std::nullopt; // such a type is never drawn, whatever its class
    if (IsClass(airspaceClass, 'A', 'B'))
        return ClassBKind;
    if (IsClass(airspaceClass, 'C', 'C'))
        return ClassCKind;
    if (zone || IsClass(airspaceClass, 'D', 'D'))
        return ClassDKind;
    return std::nullopt;
}

AirspaceDraft::AirspaceDraft(std::string airspaceClass, std::int64_t line)
    : m_class(std::move(airspaceClass)), m_line(line)
{
    if (m_class.empty())
        Refuse("it has no class");
}

void AirspaceDraft::Refuse(std::string why)
{
    if (m_whyNot.empty())
        m_whyNot = std::move(why);
}

void AirspaceDraft::TakeVariable(std::string_view value)
{
    const std::size_t equals = value.find('=');
    const std::string name = ToUpper(Trimmed(value.substr(0, equals)));
    const std::string_view setting = equals == std::string_view::npos ? "" : Trimmed(value.substr(equals + 1));
    if (name == "X") {
        if (const std::optional<LatLon> center = OnePlace(setting))
            return m_outline.SetCenter(*center);
    } else if (name == "D") {
        if (setting == "+" || setting == "-")
            return m_outline.SetClockwise(setting == "+");
    } else if (name == "W" || name == "Z") {
        return; // of airways and drawing
    }
    Refuse("V is \"" + Excerpt(value) + "\"");
}

void AirspaceDraft::TakeCircle(std::string_view value)
{
    const std::optional<std::vector<double>> numbers = NumberList(value);
    if (!m_outline.HasCenter())
        return Refuse("a circle has no centre");
    if (!numbers || numbers->size() != 1 || !((*numbers)[0] > 0 && (*numbers)[0] <= OpenAirOutline::LargestRadiusNm))
        return Refuse("DC is \"" + Excerpt(value) + "\", not a radius");
    m_outline.AddCircle((*numbers)[0]);
}

void AirspaceDraft::TakeArc(std::string_view value)
{
    constexpr double FullTurn = 360;
    const std::optional<std::vector<double>> numbers = NumberList(value);
    if (!m_outline.HasCenter())
        return Refuse("an arc has no centre");
    if (!numbers || numbers->size() != 3 || !((*numbers)[0] > 0 && (*numbers)[0] <= OpenAirOutline::LargestRadiusNm) ||
        std::abs((*numbers)[1]) > FullTurn || std::abs((*numbers)[2]) > FullTurn)
        return Refuse("DA is \"" + Excerpt(value) + "\", not a radius and two bearings");
    m_outline.AddArc((*numbers)[0], (*numbers)[1], (*numbers)[2]);
}

void AirspaceDraft::TakeArcBetween(std::string_view value)
{
    std::string_view rest = value;
    const std::optional<LatLon> from = TakePlace(rest);
    const std::optional<LatLon> to = OnePlace(rest);
    if (!m_outline.HasCenter())
        return Refuse("an arc has no centre");
    if (!from || !to)
        return Refuse("DB is \"" + Excerpt(value) + "\", not two places");
    m_outline.AddArcBetween(*from, *to);
}

void AirspaceDraft::TakeLimit(std::optional<std::int32_t>& limit, std::string_view value, const char* what)
{
    limit = LimitFt(value);
    if (!limit)
        Refuse(std::string(what) + " is \"" + Excerpt(value) + "\"");
}

bool AirspaceDraft::Take(std::string_view command, std::string_view value, std::string_view line)
{
    constexpr std::array<std::string_view, 12> Meaningless = {"AI", "AX", "TP", "AA", "AT", "DY",
                                                              "SP", "SB", "TO", "TC", "NB", "TW"};
    if (command == "AY") {
        m_type = ToUpper(NameText(value, line));
    } else if (command == "AN") {
        m_airspace.Name = NameText(value, line);
    } else if (command == "AG") {
        m_airspace.ComName = NameText(value, line);
    } else if (command == "AF" || command == "AR") {
        const std::optional<std::string> frequency = AirspaceFrequency(value);
        if (!frequency)
            Refuse("the frequency is \"" + Excerpt(value) + "\"");
        m_airspace.Frequency = frequency.value_or("");
    } else if (command == "AL") {
        TakeLimit(m_floor, value, "the lower limit");
    } else if (command == "AH") {
        TakeLimit(m_ceiling, value, "the upper limit");
    } else if (command == "V") {
        TakeVariable(value);
    } else if (command == "DP") {
        const std::optional<LatLon> corner = OnePlace(value);
        if (!corner)
            Refuse("DP is \"" + Excerpt(value) + "\", not a place");
        else
            m_outline.AddCorner(*corner);
    } else if (command == "DC") {
        TakeCircle(value);
    } else if (command == "DA") {
        TakeArc(value);
    } else if (command == "DB") {
        TakeArcBetween(value);
    } else {
        return std::ranges::find(Meaningless, command) != Meaningless.end();
    }
    return true;
}

Result<AirspaceRecord> AirspaceDraft::Finish()
{
    if (m_airspace.Name.empty())
        Refuse("it has no name");
    if (!m_floor || !m_ceiling)
        Refuse(m_floor ? "it has no upper limit" : "it has no lower limit");
    if (m_whyNot.empty() && !m_outline.Finish(m_airspace))
        Refuse("it has fewer than three points, or more than a million");
    if (!m_whyNot.empty())
        return Fail(m_airspace.Name, m_whyNot);
    if (m_airspace.ComName.empty())
        m_airspace.ComName = m_airspace.Name;
    m_airspace.Kind = *Kind();
    m_airspace.Floor = *m_floor;
    m_airspace.Ceiling = *m_ceiling;
    return std::move(m_airspace);
}

namespace {
/// Goes through the lines of a file, and hands an airspace on when the next one begins.
class OpenAirWalk {
public:
    OpenAirWalk(ImportLog& log, AirspacesLeftOut& leftOut, const std::function<void(const AirspaceRecord&)>& sink)
        : m_log(log), m_leftOut(leftOut), m_sink(sink)
    {
    }

    void TakeLine(std::string_view line, std::int64_t number);
    void EndAirspace();
    [[nodiscard]] bool AnyAirspace() const noexcept { return m_anyAirspace; }

private:
    ImportLog& m_log;
    AirspacesLeftOut& m_leftOut;
    const std::function<void(const AirspaceRecord&)>& m_sink;
    std::optional<AirspaceDraft> m_draft;
    bool m_anyAirspace = false;
};
} // namespace

void OpenAirWalk::EndAirspace()
{
    if (!m_draft)
        return;
    if (!m_draft->Class().empty() && !m_draft->Kind()) {
        ++m_leftOut.ByClass[Excerpt(m_draft->Class())];
        m_draft.reset();
        return;
    }
    const Result<AirspaceRecord> airspace = m_draft->Finish();
    if (airspace) {
        m_sink(*airspace);
    } else {
        ++m_leftOut.Unreadable;
        const std::string name = Windows1252ToUtf8(m_draft->Name().substr(0, 80));
        m_log.PassOver(m_draft->Line(), "the airspace \"" + name + "\" is left out: " + airspace.error().Why, true);
    }
    m_draft.reset();
}

void OpenAirWalk::TakeLine(std::string_view line, std::int64_t number)
{
    const std::string_view content = Trimmed(line.substr(0, line.find('*')));
    if (content.empty())
        return;
    const std::size_t wordEnd = std::min(content.find_first_of(" \t"), content.size());
    const std::string command = ToUpper(content.substr(0, std::min<std::size_t>(wordEnd, 8)));
    const std::string_view value = Trimmed(content.substr(wordEnd));
    if (command == "AC") {
        EndAirspace();
        m_anyAirspace = true;
        m_draft.emplace(ToUpper(NameText(value, line)), number);
    } else if (!m_draft) {
        m_log.PassOver(number, "stands before the first airspace");
    } else if (!m_draft->Take(command, value, line)) {
        m_log.PassOver(number, "begins with \"" + Excerpt(content.substr(0, wordEnd)) + "\", which is no command");
    }
}

Result<void> ReadOpenAirFile(TextLines& lines, ImportLog& log, AirspacesLeftOut& leftOut, OpenAirRemarks& remarks,
                             const std::function<void(const AirspaceRecord&)>& sink, const PartCallback& progress)
{
    constexpr std::int64_t LinesBetweenTellings = 4096;
    constexpr std::size_t MostRemarks = 40;
    OpenAirWalk walk(log, leftOut, sink);
    while (lines.Next()) {
        const std::string_view line = lines.Line();
        if (lines.Number() % LinesBetweenTellings == 0 && progress && !progress(lines.PartDone()))
            return Fail(lines.Name(), "the import was interrupted");
        if (lines.TooLong()) {
            log.PassOver(lines.Number(), "is longer than 256 kB");
            continue;
        }
        if (!walk.AnyAirspace() && line.starts_with('*') && remarks.size() < MostRemarks)
            remarks.push_back(Windows1252ToUtf8(NameText(line.substr(1), line)));
        walk.TakeLine(line, lines.Number());
    }
    if (lines.Failure())
        return *lines.Failure();
    walk.EndAirspace();
    if (!walk.AnyAirspace())
        return Fail(lines.Name(), "holds no airspace: it is another kind of file");
    return {};
}
} // namespace corvane
