#include "practice/PracticeScenario.h"

#include "core/File.h"
#include "core/Text.h"
#include "practice/ScenarioSchema.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cassert>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

namespace corvane {
using Json = nlohmann::json;
using JsonAdapter = valijson::adapters::NlohmannJsonAdapter;

static constexpr std::array<std::string_view, AircraftKindCount> ClassNames{"piston", "turboprop", "light jet",
                                                                            "airliner", "helicopter"};

/// The path of an error inside the file, /Aircraft/2/Class, from the library's <root>, [Aircraft], [2].
static std::string PathText(const std::vector<std::string>& context)
{
    std::string path;
    for (std::size_t i = 1; i < context.size(); ++i) {
        std::string_view step = context[i];
        if (step.size() >= 2 && step.front() == '[' && step.back() == ']')
            step = step.substr(1, step.size() - 2);
        path += '/' + std::string(step);
    }
    return path.empty() ? "/" : path;
}

/// The innermost error, which comes first; what contains it fails for the same reason.
static std::optional<std::string> SchemaError(const Json& file)
{
    const Json definition = Json::parse(ScenarioSchema, nullptr, false);
    assert(!definition.is_discarded());
    valijson::Schema schema;
    valijson::SchemaParser parser;
    parser.populateSchema(JsonAdapter(definition), schema);
    valijson::Validator validator;
    valijson::ValidationResults results;
    const JsonAdapter target(file);
    if (validator.validate(schema, target, &results))
        return std::nullopt;
    valijson::ValidationResults::Error error;
    if (!results.popError(error))
        return "/: is no scenario";
    return TerminalText(PathText(error.context) + ": " + error.description);
}

static std::optional<double> OptionalNumber(const Json& object, const char* name)
{
    const auto found = object.find(name);
    return found == object.end() ? std::nullopt : std::optional(found->get<double>());
}

static std::string TextOf(const Json& object, const char* name)
{
    const auto found = object.find(name);
    return found == object.end() ? std::string() : OneLine(Utf8ToWindows1252(found->get_ref<const std::string&>()));
}

static bool FlagOf(const Json& object, const char* name, bool otherwise)
{
    const auto found = object.find(name);
    return found == object.end() ? otherwise : found->get<bool>();
}

static std::vector<std::string> TextsOf(const Json& object, const char* name)
{
    std::vector<std::string> texts;
    if (const auto found = object.find(name); found != object.end())
        for (const Json& text : *found)
            texts.push_back(ToUpper(OneLine(Utf8ToWindows1252(text.get_ref<const std::string&>()))));
    return texts;
}

static void ReadWeather(const Json& file, PracticeScenario& scenario)
{
    if (const auto wind = file.find("Wind"); wind != file.end())
        scenario.Wind = {(*wind)["Direction"].get<double>(), (*wind)["Speed"].get<double>()};
    if (const auto runways = file.find("Runways"); runways != file.end()) {
        scenario.Landing = TextsOf(*runways, "Landing");
        scenario.TakeOff = TextsOf(*runways, "TakeOff");
    }
}

static ScenarioAircraft AircraftFrom(const Json& object)
{
    const auto kind = std::find(ClassNames.begin(), ClassNames.end(), object["Class"].get_ref<const std::string&>());
    assert(kind != ClassNames.end());
    ScenarioAircraft aircraft;
    aircraft.Callsign = TextOf(object, "Callsign");
    aircraft.Kind = static_cast<AircraftKind>(kind - ClassNames.begin());
    aircraft.AtS = OptionalNumber(object, "At").value_or(aircraft.AtS);
    aircraft.OnGround = FlagOf(object, "OnGround", aircraft.OnGround);
    aircraft.BearingDeg = OptionalNumber(object, "Bearing").value_or(aircraft.BearingDeg);
    aircraft.DistanceNm = OptionalNumber(object, "Distance").value_or(aircraft.DistanceNm);
    aircraft.AltitudeFt = OptionalNumber(object, "Altitude");
    aircraft.From = ToUpper(TextOf(object, "From"));
    aircraft.To = ToUpper(TextOf(object, "To"));
    aircraft.Over = ToUpper(TextOf(object, "Over"));
    aircraft.FuelMin = OptionalNumber(object, "Fuel");
    aircraft.SilentAtS = OptionalNumber(object, "SilentAt");
    aircraft.SilentForS = OptionalNumber(object, "SilentFor").value_or(aircraft.SilentForS);
    aircraft.EmergencyAtS = OptionalNumber(object, "EmergencyAt");
    if (object.contains("Emergency"))
        aircraft.Emergency = TextOf(object, "Emergency");
    aircraft.LeavesAtS = OptionalNumber(object, "LeavesAt");
    aircraft.ReadBackErrors = OptionalNumber(object, "ReadBackErrors").value_or(0);
    return aircraft;
}

Result<PracticeScenario> ParseScenario(std::string_view text, const std::string& name)
{
    const Json file = Json::parse(text, nullptr, false);
    if (file.is_discarded())
        return Fail(name, "is no JSON");
    if (const auto error = SchemaError(file))
        return Fail(name, *error);
    PracticeScenario scenario;
    scenario.Name = TextOf(file, "Name");
    scenario.About = TextOf(file, "About");
    scenario.PilotsAsk = FlagOf(file, "PilotsAsk", true);
    ReadWeather(file, scenario);
    scenario.HostLeavesAtS = OptionalNumber(file, "HostLeavesAt");
    for (const Json& aircraft : file["Aircraft"])
        scenario.Aircraft.push_back(AircraftFrom(aircraft));
    if (const auto hints = file.find("Hints"); hints != file.end())
        for (const Json& hint : *hints)
            scenario.Hints.push_back({hint["At"].get<double>(), TextOf(hint, "Text")});
    for (std::size_t i = 0; i < scenario.Aircraft.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (!scenario.Aircraft[i].Callsign.empty() &&
                scenario.Aircraft[i].Callsign == scenario.Aircraft[j].Callsign)
                return Fail(name, "/Aircraft/" + std::to_string(i) + "/Callsign: is that of /Aircraft/" +
                                      std::to_string(j) + " too");
    return scenario;
}

Result<PracticeScenario> ReadScenario(const std::filesystem::path& path)
{
    constexpr std::uintmax_t LargestFile = 1 << 20;
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (!error && size > LargestFile)
        return Fail(path.string(), "has " + std::to_string(size) + " bytes; a scenario has a million at the most");
    const auto bytes = ReadWholeFile(path);
    if (!bytes)
        return bytes.error();
    const ByteSpan content = bytes->Span();
    return ParseScenario({reinterpret_cast<const char*>(content.data()), content.size()}, path.string());
}
} // namespace corvane
