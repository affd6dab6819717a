#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <string_view>
#include <utility>

// Puts the ratios that the project holds itself to into one table, from the results that the benchmarks have written.

namespace {
using Json = nlohmann::json;

/// One promise: something measured stays within a multiple of a baseline of the same run. A value is the time of a
/// benchmark; after a colon its processor time ("cpu_time"), or one of its counters, which is a number of milliseconds
/// where its name ends so. Processor time is for what runs on one thread and waits for nothing: other work on the
/// machine disturbs it less.
struct Promise {
    const char* What;
    const char* Program;
    const char* Measured;
    const char* Baseline;
    double Limit;
};

constexpr std::array Promises{
    Promise{"Build of the demonstration world / `cp -r`", "build", "BuildDatabase/0", "CopyWithCp/0", 3},
    Promise{"Build, 1,000 airports / `cp -r`", "build", "BuildDatabase/1000", "CopyWithCp/1000", 3},
    Promise{"Build, 5,000 airports / `cp -r`", "build", "BuildDatabase/5000", "CopyWithCp/5000", 3},
    Promise{"Build, 20,000 airports / `cp -r`", "build", "BuildDatabase/20000", "CopyWithCp/20000", 3},
    Promise{"Area of KSEA, demonstration world / reading its files", "demo_world", "LoadSeattle", "ReadFilesAsCat", 2},
    Promise{"Airport's area, world-sized / reading its files", "area", "load an airport's area", "read the same files",
            2},
    Promise{"Sector's area, world-sized / reading its files", "area", "load a sector's area", "read the same files", 2},
    Promise{"Redraw, airport, level 14 / painting its operations", "radar", "Redraw/Airport/14", "Baseline/Airport/14",
            1.25},
    Promise{"Redraw, sector, level 5 / painting its operations", "radar", "Redraw/Sector/5", "Baseline/Sector/5", 1.25},
    Promise{"Redraw, sector, level 14 / painting its operations", "radar", "Redraw/Sector/14", "Baseline/Sector/14",
            1.25},
    Promise{"Redraw, sector, level 25 / painting its operations", "radar", "Redraw/Sector/25", "Baseline/Sector/25",
            1.25},
    Promise{"Redraw, sector, level 30 / painting its operations", "radar", "Redraw/Sector/30", "Baseline/Sector/30",
            1.25},
    Promise{"Redraw, sector, level 36 / painting its operations", "radar", "Redraw/Sector/36", "Baseline/Sector/36",
            1.25},
    Promise{"300 IFR targets at rest / 300 VFR targets", "radar_live", "RefreshTargets/IfrResting",
            "RefreshTargets/VfrResting", 1.5},
    Promise{"300 IFR targets, all moved / 300 VFR targets", "radar_live", "RefreshTargets/IfrMoving",
            "RefreshTargets/VfrMoving", 1.5},
    Promise{"Panel tick / one projection of each candidate", "radar_live", "TickOverNothing", "ProjectCandidatesOnce",
            2},
    Promise{"Pump tick over 10,000 positions / decoding them", "session", "PumpPositions", "DecodePositions", 3},
    Promise{"Conflicts among 1,000 targets / two milliseconds", "conflict", "SearchForConflicts/1000:cpu_time",
            "TwoMilliseconds", 1},
    Promise{"Conflicts among 2,000 targets / among 1,000", "conflict", "SearchGrowth:of_2000_ms",
            "SearchGrowth:of_1000_ms", 3},
    Promise{"A second of 20,000 aircraft, bytes to table / decoding them", "feed", "FeedToTable", "DecodeFeed", 3},
    Promise{"A second of 20,000 aircraft, bytes to 5,000 players / one second", "feed", "FeedToPlayers", "", 0.333},
    Promise{"20,000 FlightGear packets a second to 2,000 players / one second", "flightgear", "FlightGearToPlayers", "",
            0.5},
    Promise{"FlightGear packets sent / received", "flightgear", "FlightGearToPlayers:sent",
            "FlightGearToPlayers:received", 1},
    Promise{"Covered blocks, 1,000 scenes of 30, modern / classic", "crowd", "CoveredBlocks:modern_px",
            "CoveredBlocks:classic_px", 0.05},
    Promise{"Changes of place a block and minute / one", "crowd", "ChangesInSteadyTraffic:changes_a_minute",
            "ChangesInSteadyTraffic:one", 1},
    Promise{"Placing 200 blocks / three milliseconds", "crowd", "Place200/AllNew:cpu_time", "ThreeMilliseconds", 1},
    Promise{"300 targets, everything on / the classic display", "crowd", "Refresh300/EverythingOn:cpu_time",
            "Refresh300/Classic:cpu_time", 2},
    Promise{"A keystroke that finds much, 25,000 entries / 20 milliseconds", "find", "Keystroke/MuchIsFound",
            "TwentyMilliseconds", 1},
    Promise{"A keystroke that finds little / 20 milliseconds", "find", "Keystroke/LittleIsFound", "TwentyMilliseconds",
            1},
    Promise{"A practice week / two minutes", "practice", "SimulatedWeek", "SimulatedWeekLimit", 1},
    Promise{"Start to the chooser, 25,000 airports / reading its files", "windows", "StartToTheChooser", "ReadTheFiles",
            3},
    Promise{"1,000 targets at rest / plain painting", "targets", "TargetRefresh/Resting", "TargetsByPlainPainting",
            0.5},
    Promise{"1,000 targets, all moved / plain painting", "targets", "TargetRefresh/Moving", "TargetsByPlainPainting",
            0.5},
    Promise{"Longest pause in a session / one redraw", "windows", "LongestPauseInASession:session_own_ms",
            "LongestPauseInASession:redraw_own_ms", 1},
    Promise{"Longest pause while an area is loaded / one redraw", "windows", "LongestPauseInASession:load_own_ms",
            "LongestPauseInASession:redraw_own_ms", 1},
    Promise{"20,000 messages through a peer / one second", "directplay", "PeerThroughput", "", 1},
};

double ToNanoseconds(double value, const std::string& unit)
{
    if (unit == "s")
        return value * 1e9;
    if (unit == "ms")
        return value * 1e6;
    return unit == "us" ? value * 1e3 : value;
}

/// All results of one benchmark program.
class Results {
public:
    explicit Results(const std::filesystem::path& file)
    {
        std::ifstream in(file);
        std::string text((std::istreambuf_iterator<char>(in)), {});
        // The spread of a constant is written as a number that is none, which JSON does not know.
        text = std::regex_replace(text, std::regex(": -?(nan|infinity|inf)", std::regex::icase), ": null");
        m_document = Json::parse(text, nullptr, false);
    }

    /// The least of all repetitions, which other work on the machine disturbs least; nothing where there is no such
    /// benchmark.
    [[nodiscard]] std::optional<double> Best(const std::string& name) const
    {
        if (!m_document.is_object() || !m_document.contains("benchmarks"))
            return std::nullopt;
        const auto colon = name.find(':');
        std::optional<double> best;
        for (const Json& result : m_document.at("benchmarks")) {
            const auto value = Value(result, name.substr(0, colon), name.substr(std::min(colon, name.size() - 1) + 1));
            if (value && (!best || *value < *best))
                best = value;
        }
        return best;
    }

private:
    /// What a result says of a benchmark: its time, or one of its counters.
    static std::optional<double> Value(const Json& result, const std::string& name, const std::string& counter)
    {
        const std::string run = result.value("run_name", "");
        if (result.value("run_type", "") != "iteration" || (run != name && !run.starts_with(name + "/")))
            return std::nullopt;
        const std::string value = counter.empty() ? "real_time" : counter;
        const auto found = result.find(value);
        if (found == result.end())
            return std::nullopt;
        if (value.ends_with("_time"))
            return ToNanoseconds(*found, result.at("time_unit"));
        return value.ends_with("_ms") ? ToNanoseconds(*found, "ms") : double{*found};
    }

    Json m_document;
};

/// A time in the unit in which it reads best.
std::string TimeText(double nanoseconds)
{
    constexpr std::array<std::pair<double, const char*>, 4> Units{{{1e9, "s"}, {1e6, "ms"}, {1e3, "µs"}, {1, "ns"}}};
    for (const auto& [size, unit] : Units)
        if (nanoseconds >= size) {
            std::array<char, 32> text{};
            std::snprintf(text.data(), text.size(), "%.3g %s", nanoseconds / size, unit);
            return text.data();
        }
    return "0";
}

std::string NumberText(double number)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.4g", number);
    return text.data();
}

/// Whether a value is a plain counter, and no time.
bool IsNumber(std::string_view name)
{
    return name.find(':') != std::string_view::npos && !name.ends_with("_ms") && !name.ends_with("_time");
}

/// Returns whether the promise was measured and kept.
bool PrintLine(const Promise& promise, const Results& results)
{
    constexpr double OneSecond = 1e9;
    const bool againstASecond = promise.Baseline[0] == '\0';
    const auto measured = results.Best(promise.Measured);
    const auto baseline = againstASecond ? OneSecond : results.Best(promise.Baseline);
    const std::string command = std::string("`./run-bench ") + promise.Program + "`";
    if (!measured || !baseline || *baseline <= 0) {
        std::printf("| %s | not measured | | | %g | | %s |\n", promise.What, promise.Limit, command.c_str());
        return false;
    }
    const bool isNumber = IsNumber(promise.Measured);
    const auto text = [&](double value) { return isNumber ? NumberText(value) : TimeText(value); };
    const double ratio = *measured / *baseline;
    std::printf("| %s | %s | %s | %.2f | %g | %s | %s |\n", promise.What, text(*measured).c_str(),
                text(*baseline).c_str(), ratio, promise.Limit, ratio <= promise.Limit ? "kept" : "**missed**",
                command.c_str());
    return ratio <= promise.Limit;
}
} // namespace

/// corvane_bench_report FOLDER [PROGRAM...]: FOLDER holds PROGRAM.json of each. Exit status 1 where a limit was missed.
int main(int argc, char** argv)
{
    if (argc < 2) {
        std::cerr << "usage: corvane_bench_report FOLDER [PROGRAM...]\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    const auto wanted = [&](std::string_view program) {
        return argc == 2 || std::find(argv + 2, argv + argc, program) != argv + argc;
    };
    std::map<std::string, Results> results;
    bool kept = true;
    std::puts("| what / baseline | measured | baseline | ratio | limit | | command |\n"
              "|---|---|---|---|---|---|---|");
    for (const Promise& promise : Promises) {
        if (!wanted(promise.Program))
            continue;
        const auto found =
            results.try_emplace(promise.Program, folder / (std::string(promise.Program) + ".json")).first;
        kept = PrintLine(promise, found->second) && kept;
    }
    return kept ? 0 : 1;
}
