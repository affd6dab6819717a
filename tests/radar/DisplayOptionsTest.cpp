#include "radar/DisplayOptions.h"

#include "core/NumberText.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace corvane {
namespace {
/// An option's value as SetDisplayOption reads it.
std::string ValueText(const DisplayOption& option, const DisplayOptions& options)
{
    const double value = option.Get(options);
    return option.Choices.empty() ? NumberText(value) : std::string(option.Choices[static_cast<std::size_t>(value)]);
}

struct SettingCase {
    const char* Name;
    const char* Assignment;
    const char* Value; ///< as it is told afterwards; null where the assignment is refused
};
class DisplaySetting : public testing::TestWithParam<SettingCase> {};
TEST_P(DisplaySetting, IsTakenWithinItsRangeOnly)
{
    DisplayOptions options;
    const std::string assignment = GetParam().Assignment;
    const Result<void> set = SetDisplayOption(options, assignment);
    if (GetParam().Value != nullptr) {
        ASSERT_TRUE(set) << set.error().Text();
        EXPECT_EQ(ValueText(*FindDisplayOption(assignment.substr(0, assignment.find('='))), options), GetParam().Value);
        return;
    }
    ASSERT_FALSE(set);
    EXPECT_EQ(options, DisplayOptions());
    for (const DisplayOption& option : AllDisplayOptions())
        EXPECT_NE(set.error().Why.find(option.Name), std::string::npos) << option.Name;
}
INSTANTIATE_TEST_SUITE_P(
    Display, DisplaySetting,
    testing::Values(
        SettingCase{"Choice", "Blocks=full", "full"}, SettingCase{"ChoiceInCapitals", "Blocks=Full", nullptr},
        SettingCase{"ChoiceByNumber", "Blocks=1", nullptr},
        SettingCase{"GroundHasOtherChoices", "GroundBlocks=compact", nullptr},
        SettingCase{"LowestDirection", "LeaderDirection=1", "1"},
        SettingCase{"NoDirection", "LeaderDirection=5", nullptr},
        SettingCase{"TenthDirection", "LeaderDirection=10", nullptr},
        SettingCase{"ShortestLeader", "LeaderLengthPx=10", "10"}, SettingCase{"TooShort", "LeaderLengthPx=9", nullptr},
        SettingCase{"Fraction", "ConflictNm=2.5", "2.5"}, SettingCase{"BelowHalf", "ConflictNm=0.49", nullptr},
        SettingCase{"FractionOfAWhole", "ConflictFt=900.5", nullptr}, SettingCase{"Negative", "FloorFt=-2000", "-2000"},
        SettingCase{"TooHigh", "CeilingFt=100001", nullptr}, SettingCase{"Switch", "TrueProportions=1", "1"},
        SettingCase{"NoSwitch", "ConflictAlert=2", nullptr}, SettingCase{"NotANumber", "HistoryDots=nan", nullptr},
        SettingCase{"Tail", "HistoryDots=5x", nullptr}, SettingCase{"Nothing", "HistoryDots=", nullptr},
        SettingCase{"NoSign", "HistoryDots", nullptr}, SettingCase{"Unknown", "Dots=5", nullptr},
        SettingCase{"Empty", "", nullptr}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(DisplaySets, DifferAsAgreedAndHoldValuesInRange)
{
    const std::string expected = "Blocks compact Placement automatic GroundBlocks callsign HistoryDots 5 "
                                 "PredictionMinutes 1 StaleSeconds 10 ConflictAlert 1 LowAltitudeAlert 1 "
                                 "TrueProportions 1 ";
    const DisplayOptions classic = *DisplayByName("classic", ControlMode::Sector);
    const DisplayOptions modern = *DisplayByName("modern", ControlMode::Airport);
    std::string different;
    for (const DisplayOption& option : AllDisplayOptions()) {
        EXPECT_TRUE(option.Takes(option.Get(classic)) && option.Takes(option.Get(modern))) << option.Name;
        if (option.Get(classic) != option.Get(modern))
            different.append(option.Name).append(" ").append(ValueText(option, modern)).append(" ");
    }
    EXPECT_EQ(different, expected);
    EXPECT_EQ(classic, DisplayOptions());
    EXPECT_EQ(DisplayByName("modern", ControlMode::Sector)->ConflictNm, 5);
    EXPECT_FALSE(DisplayByName("Modern", ControlMode::Airport));
}
TEST(DisplayOptions, StandInTheGuideAsTheyAre)
{
    const char* const path = std::getenv("CORVANE_GUIDE"); // NOLINT(concurrency-mt-unsafe): the test has one thread
    if (path == nullptr)
        GTEST_SKIP() << "CORVANE_GUIDE names no guide";
    std::ifstream file(path);
    const std::string guide((std::istreambuf_iterator<char>(file)), {});
    for (const DisplayOption& option : AllDisplayOptions()) {
        const std::string row = "| `" + std::string(option.Name) + "` | " + option.Range() + " | " +
                                ValueText(option, ClassicDisplay()) + " | " + ValueText(option, ModernDisplay()) +
                                " | " + std::string(option.Help) + " |";
        EXPECT_NE(guide.find(row), std::string::npos) << row;
    }
}
} // namespace
} // namespace corvane
