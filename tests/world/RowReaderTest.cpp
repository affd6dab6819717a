#include "world/RowReader.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {
struct NameCase {
    const char* Name;
    std::string Line;
    std::string Kept;
};
class NamesOfAnyEncoding : public testing::TestWithParam<NameCase> {};

TEST_P(NamesOfAnyEncoding, AreKeptInWindows1252)
{
    EXPECT_EQ(NameText(GetParam().Line, GetParam().Line), GetParam().Kept);
}

INSTANTIATE_TEST_SUITE_P(
    World, NamesOfAnyEncoding,
    testing::Values(NameCase{"Blanks", "  Harbour \t  Hospital ", "Harbour Hospital"},
                    NameCase{"Utf8", "G\xC3\xB6hlis \xE2\x82\xAC", "G\xF6hlis \x80"},
                    NameCase{"Latin1",
                             "Zweibr\xFC"
                             "cken",
                             "Zweibr\xFC"
                             "cken"},
                    NameCase{"OneBadSequenceMakesTheLineWindows1252", "\xC3\xB6 \xFC", "\xC3\xB6 \xFC"},
                    NameCase{"NotInWindows1252", "\xD0\x90\xE4\xB8\x89", "??"},
                    NameCase{"Overlong", "\xC0\xAF", "\xC0\xAF"}, NameCase{"Surrogate", "\xED\xA0\x80", "\xED\xA0\x80"},
                    NameCase{"Controls",
                             "\x10"
                             "Gate\x7F"
                             "1\xC2\x85 2",
                             "Gate 1 2"},
                    NameCase{"OpenCodes",
                             "a\x81"
                             "b\xFC",
                             "a b\xFC"},
                    NameCase{"CutSequence", "a\xC3", "a\xC3"}, NameCase{"OnlyBlanks", " \t ", ""}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(RowReader, ReadsNumbersAndTellsWhereItCannot)
{
    RowReader row(" +010.5\t-030.25  12x");
    const LatLon place = row.Position();
    EXPECT_EQ(place, (LatLon{10.5, -30.25}));
    EXPECT_EQ(row.Number(), 0);
    EXPECT_TRUE(row.Failed());
    EXPECT_EQ(row.Why(), "field 3 is \"12x\", not a number");
    EXPECT_EQ(row.Field(), ""); // nothing is read behind a failure

    RowReader shortRow("1 2");
    shortRow.Skip(3);
    EXPECT_EQ(shortRow.Why(), "ends before field 3");
}

TEST(NumberOf, TakesFiniteDecimalsAlone)
{
    EXPECT_EQ(NumberOf("-000.5"), -0.5);
    for (const char* const text : {"", "+", "+-1", "inf", "nan", "1e999", "0x10", "1,5", "1 "})
        EXPECT_FALSE(NumberOf(text)) << text;
}

TEST(Excerpt, IsShortAndPrintable)
{
    EXPECT_EQ(Excerpt("a\x01\x1B[2J"), "a [2J");
    const std::string cut = Excerpt(std::string(39, 'a') + "\xC3\xB6" + std::string(9, 'b'));
    EXPECT_EQ(cut, std::string(39, 'a') + "..."); // no half character
}
} // namespace
} // namespace corvane
