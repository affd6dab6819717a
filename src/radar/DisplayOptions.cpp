#include "radar/DisplayOptions.h"

#include "core/NumberText.h"
#include "core/Rounding.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <type_traits>

namespace corvane {
static constexpr std::array<std::string_view, 2> ReadySetNames = {"classic", "modern"};
static constexpr std::array<std::string_view, 3> BlockNames = {"classic", "compact", "full"};
static constexpr std::array<std::string_view, 2> PlacementNames = {"fixed", "automatic"};
static constexpr std::array<std::string_view, 3> GroundBlockNames = {"full", "callsign", "none"};
static constexpr std::array<std::string_view, 4> ColourNames = {"classic", "contrast", "safe", "dim"};

template <auto Member> static double GetMember(const DisplayOptions& options)
{
    return static_cast<double>(options.*Member);
}

template <auto Member> static void SetMember(DisplayOptions& options, double value)
{
    using Value = std::remove_reference_t<decltype(options.*Member)>;
    if constexpr (std::is_same_v<Value, double>)
        options.*Member = value;
    else
        options.*Member = static_cast<Value>(RoundTo<std::int32_t>(value));
}

template <auto Member>
static constexpr DisplayOption NumberOption(std::string_view name, double lowest, double highest, std::string_view help,
                                            bool whole = true, std::optional<double> except = std::nullopt)
{
    return {name, help, {}, lowest, highest, whole, except, GetMember<Member>, SetMember<Member>};
}

template <auto Member>
static constexpr DisplayOption ChoiceOption(std::string_view name, std::span<const std::string_view> choices,
                                            std::string_view help)
{
    const auto last = static_cast<double>(choices.size() - 1);
    return {name, help, choices, 0, last, true, std::nullopt, GetMember<Member>, SetMember<Member>};
}

static constexpr std::array<DisplayOption, 18> DisplayOptionTable{{
    ChoiceOption<&DisplayOptions::Blocks>("Blocks", BlockNames, "what the targets' blocks say"),
    ChoiceOption<&DisplayOptions::Placement>("Placement", PlacementNames, "whether blocks make room for one another"),
    NumberOption<&DisplayOptions::LeaderDirection>("LeaderDirection", 1, 9, "where blocks stand, as on a key pad", true,
                                                   5),
    NumberOption<&DisplayOptions::LeaderLengthPx>("LeaderLengthPx", 10, 100, "length of the leader lines in pixels"),
    ChoiceOption<&DisplayOptions::GroundBlocks>("GroundBlocks", GroundBlockNames,
                                                "what blocks say of aircraft on the ground"),
    NumberOption<&DisplayOptions::HistoryDots>("HistoryDots", 0, 30, "dots of a target's trail"),
    NumberOption<&DisplayOptions::HistorySeconds>("HistorySeconds", 1, 60, "seconds between the dots of a trail"),
    NumberOption<&DisplayOptions::PredictionMinutes>("PredictionMinutes", 0, 5,
                                                     "minutes that the predicted lines reach"),
    NumberOption<&DisplayOptions::StaleSeconds>("StaleSeconds", 0, 600,
                                                "seconds until a silent target is hollow; 0 is never"),
    NumberOption<&DisplayOptions::ConflictAlert>("ConflictAlert", 0, 1, "tells of aircraft that come too close"),
    NumberOption<&DisplayOptions::LowAltitudeAlert>("LowAltitudeAlert", 0, 1, "tells of IFR aircraft that are too low"),
    NumberOption<&DisplayOptions::ConflictNm>("ConflictNm", 0.5, 20, "nautical miles that aircraft keep apart", false),
    NumberOption<&DisplayOptions::ConflictFt>("ConflictFt", 100, 5000, "or feet that they keep apart"),
    NumberOption<&DisplayOptions::ConflictSeconds>("ConflictSeconds", 0, 300,
                                                   "seconds that conflicts are looked for ahead"),
    NumberOption<&DisplayOptions::FloorFt>("FloorFt", -2000, 100000, "feet below which targets are small dots"),
    NumberOption<&DisplayOptions::CeilingFt>("CeilingFt", -2000, 100000, "feet above which targets are small dots"),
    NumberOption<&DisplayOptions::TrueProportions>("TrueProportions", 0, 1, "a mile is as many pixels up as across"),
    ChoiceOption<&DisplayOptions::Colours>("Colours", ColourNames, "the scope's colours"),
}};

DisplayOptions ModernDisplay(ControlMode mode) noexcept
{
    constexpr double SectorNm = 5;
    DisplayOptions options;
    options.Blocks = BlockContent::Compact;
    options.Placement = BlockPlacement::Automatic;
    options.GroundBlocks = GroundBlockContent::Callsign;
    options.HistoryDots = 5;
    options.PredictionMinutes = 1;
    options.StaleSeconds = 10;
    options.ConflictAlert = true;
    options.LowAltitudeAlert = true;
    options.TrueProportions = true;
    if (mode == ControlMode::Sector)
        options.ConflictNm = SectorNm;
    return options;
}

TrackOptions TracksOf(const DisplayOptions& options) noexcept
{
    return {.HistoryDots = options.HistoryDots,
            .HistorySeconds = options.HistorySeconds,
            .StaleSeconds = options.StaleSeconds};
}

AlertOptions AlertsOf(const DisplayOptions& options) noexcept
{
    return {.ConflictAlert = options.ConflictAlert,
            .LowAltitudeAlert = options.LowAltitudeAlert,
            .ConflictNm = options.ConflictNm,
            .ConflictFt = static_cast<double>(options.ConflictFt),
            .ConflictSeconds = static_cast<double>(options.ConflictSeconds)};
}

std::optional<DisplayOptions> DisplayByName(std::string_view name, ControlMode mode) noexcept
{
    if (name == ReadySetNames[0])
        return ClassicDisplay();
    if (name == ReadySetNames[1])
        return ModernDisplay(mode);
    return std::nullopt;
}

bool DisplayOption::Takes(double value) const noexcept
{
    const bool inRange = value >= Lowest && value <= Highest; // false for what is no number
    return inRange && value != Except && (!Whole || value == std::floor(value));
}

std::string DisplayOption::Range() const
{
    std::string text;
    if (!Choices.empty()) {
        for (std::size_t i = 0; i < Choices.size(); ++i)
            text.append(i == 0 ? "" : i + 1 < Choices.size() ? ", " : " or ").append(Choices[i]);
        return text;
    }
    AppendNumber(text, Lowest);
    text += Highest == Lowest + 1 && Whole ? " or " : " to ";
    AppendNumber(text, Highest);
    if (Except) {
        text += " without ";
        AppendNumber(text, *Except);
    }
    return text;
}

std::span<const DisplayOption> AllDisplayOptions() noexcept
{
    return DisplayOptionTable;
}

const DisplayOption* FindDisplayOption(std::string_view name) noexcept
{
    const auto* const found = std::ranges::find(DisplayOptionTable, name, &DisplayOption::Name);
    return found == DisplayOptionTable.end() ? nullptr : found;
}

static std::string AllOptionNames()
{
    std::string names;
    for (const DisplayOption& option : DisplayOptionTable)
        names.append(names.empty() ? "" : ", ").append(option.Name);
    return names;
}

static std::optional<double> ValueFromText(const DisplayOption& option, std::string_view text)
{
    if (!option.Choices.empty()) {
        const auto found = std::ranges::find(option.Choices, text);
        if (found == option.Choices.end())
            return std::nullopt;
        return static_cast<double>(found - option.Choices.begin());
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !option.Takes(value))
        return std::nullopt;
    return value;
}

Result<void> SetDisplayOption(DisplayOptions& options, std::string_view assignment)
{
    const std::size_t sign = assignment.find('=');
    const std::string_view name = assignment.substr(0, sign);
    const DisplayOption* const option = FindDisplayOption(name);
    if (option == nullptr)
        return Fail(std::string(name), "is no display option; there are " + AllOptionNames());
    const std::string_view text = sign == std::string_view::npos ? std::string_view() : assignment.substr(sign + 1);
    const std::optional<double> value = ValueFromText(*option, text);
    if (!value)
        return Fail(std::string(name), "takes " + option->Range() + ", not \"" + std::string(text) +
                                           "\"; the display options are " + AllOptionNames());
    option->Set(options, *value);
    assert(option->Get(options) == *value);
    return {};
}
} // namespace corvane
