#include "cli/Commands.h"
#include "cli/RecordJson.h"
#include "core/Frequency.h"
#include "core/Geodesy.h"
#include "core/NumberText.h"
#include "core/Rounding.h"
#include "core/SimulatorFolder.h"
#include "core/Text.h"
#include "session/WireUnits.h"

#include <algorithm>
#include <array>
#include <istream>
#include <limits>
#include <ostream>
#include <string_view>

namespace corvane {
namespace {
/// The arguments of one calculation, all numbers. A whole number that its procedure cannot hold marks them as wrong.
class Arguments {
public:
    explicit Arguments(std::vector<double> values) : m_values(std::move(values)) {}

    [[nodiscard]] std::size_t Count() const { return m_values.size(); }
    [[nodiscard]] bool OutOfRange() const { return m_outOfRange; }

    double operator[](std::size_t i) const { return m_values[i]; }

    int Whole16(std::size_t i)
    {
        const std::optional<std::int16_t> whole = RoundChecked<std::int16_t>(m_values[i]);
        m_outOfRange = m_outOfRange || !whole;
        return whole.value_or(0);
    }

    /// 32 bits, written as a signed or an unsigned number.
    std::int32_t Word(std::size_t i)
    {
        const double value = RoundHalfEven(m_values[i]);
        if (!(value >= std::numeric_limits<std::int32_t>::min() &&
              value <= std::numeric_limits<std::uint32_t>::max())) {
            m_outOfRange = true;
            return 0;
        }
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(value)));
    }

private:
    std::vector<double> m_values;
    bool m_outOfRange = false;
};

struct Procedure {
    std::string_view Name;
    std::size_t ArgumentCount;
    Json (*Compute)(const MagVarGrid& grid, Arguments& a);
};
} // namespace

static Json PositionJson(const LatLon& position)
{
    return Json::array({position.Lat, position.Lon});
}

static Json BcdFrequencyJson(std::int32_t word)
{
    const std::optional<std::string> text = BcdFrequency(word);
    return text ? Json(*text) : Json(nullptr);
}

static constexpr auto Procedures = std::to_array<Procedure>({
    {"NormalizeLongitude", 1, [](const MagVarGrid&, Arguments& a) -> Json { return NormalizeLongitude(a[0]); }},
    {"NormalizeCourse", 1, [](const MagVarGrid&, Arguments& a) -> Json { return NormalizeCourse(a.Whole16(0)); }},
    {"ArcSin", 1, [](const MagVarGrid&, Arguments& a) -> Json { return ArcSin(a[0]); }},
    {"ArcCos", 1, [](const MagVarGrid&, Arguments& a) -> Json { return ArcCos(a[0]); }},
    {"FloatMod", 2, [](const MagVarGrid&, Arguments& a) -> Json { return FloatMod(a[0], a[1]); }},
    {"DistanceNm", 4,
     [](const MagVarGrid&, Arguments& a) -> Json {
         return DistanceNm({a[0], a[1]}, {a[2], a[3]});
     }},
    {"DistanceFt", 4,
     [](const MagVarGrid&, Arguments& a) -> Json {
         return DistanceFt({a[0], a[1]}, {a[2], a[3]});
     }},
    {"TrueCourse", 4,
     [](const MagVarGrid&, Arguments& a) -> Json {
         return TrueCourse({a[0], a[1]}, {a[2], a[3]});
     }},
    {"MagneticCourse", 4,
     [](const MagVarGrid& grid, Arguments& a) -> Json {
         return MagneticCourse(grid, {a[0], a[1]}, {a[2], a[3]});
     }},
    {"MagneticFromTrue", 3,
     [](const MagVarGrid& grid, Arguments& a) -> Json {
         return MagneticFromTrue(grid, a.Whole16(0), {a[1], a[2]});
     }},
    {"TrueFromMagnetic", 3,
     [](const MagVarGrid& grid, Arguments& a) -> Json {
         return TrueFromMagnetic(grid, a.Whole16(0), {a[1], a[2]});
     }},
    {"DestinationNm", 4,
     [](const MagVarGrid&, Arguments& a) -> Json {
         return PositionJson(DestinationNm({a[0], a[1]}, a.Whole16(2), a.Whole16(3)));
     }},
    {"DestinationFt", 4,
     [](const MagVarGrid&, Arguments& a) -> Json {
         return PositionJson(DestinationFt({a[0], a[1]}, a.Whole16(2), a.Whole16(3)));
     }},
    {"HeadingFromPbh", 1, [](const MagVarGrid&, Arguments& a) -> Json { return HeadingFromPbh(a.Word(0)); }},
    {"BcdFrequency", 1, [](const MagVarGrid&, Arguments& a) -> Json { return BcdFrequencyJson(a.Word(0)); }},
});

/// The result of one line, or why it has none.
static Result<Json> Calculate(const std::string& line, const std::string& where, const MagVarGrid& grid)
{
    const Json request = Json::parse(line, nullptr, false);
    if (!request.is_array() || request.empty() || !request[0].is_string())
        return Fail(where, "is not an array that begins with a procedure's name");
    const auto& name = request[0].get_ref<const std::string&>();
    const auto* const procedure =
        std::find_if(Procedures.begin(), Procedures.end(), [&](const Procedure& p) { return p.Name == name; });
    if (procedure == Procedures.end())
        return Fail(where, "no procedure is called " + name);
    std::vector<double> values;
    for (std::size_t i = 1; i < request.size(); ++i) {
        if (!request[i].is_number())
            return Fail(where, "argument " + NumberText(std::int64_t(i)) + " is not a number");
        values.push_back(request[i].get<double>());
    }
    if (values.size() != procedure->ArgumentCount)
        return Fail(where, name + " takes " + NumberText(std::int64_t(procedure->ArgumentCount)) + " numbers, not " +
                               NumberText(std::int64_t(values.size())));
    Arguments arguments(std::move(values));
    Json result = procedure->Compute(grid, arguments);
    if (arguments.OutOfRange())
        return Fail(where, "a whole number is out of the range that " + name + " takes");
    return result;
}

static Result<void> CalculateLines(const Console& console, const MagVarGrid& grid)
{
    std::string line;
    for (std::int64_t number = 1; std::getline(console.In, line); ++number) {
        if (line.find_first_not_of(" \t\r") == std::string::npos)
            continue;
        const Result<Json> result = Calculate(line, "line " + NumberText(number), grid);
        if (!result)
            return result.error();
        console.Out << result->dump() << '\n';
    }
    return {};
}

void AddCalcCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const command = app.add_subcommand(
        "calc", "Computes geodesy in bulk: reads lines such as [\"DistanceNm\",47,-122,48,-122] from standard input");
    const auto folders = std::make_shared<FolderOptions>();
    AddFsFolderOption(*command, *folders);
    command->callback([folders, &console, &work] {
        work = [folders, &console]() -> Result<void> {
            const auto grid = std::make_unique<MagVarGrid>();
            if (!folders->FsFolder.empty())
                ReadMagVarGrid(*grid, TypedPath(folders->FsFolder));
            return CalculateLines(console, *grid);
        };
    });
}
} // namespace corvane
