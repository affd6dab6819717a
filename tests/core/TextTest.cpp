#include "core/Text.h"

#include "core/Frequency.h"
#include "core/NumberText.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {
TEST(Windows1252, KeepsEveryByteThereAndBack)
{
    std::string all;
    for (int code = 0; code < 256; ++code)
        all += static_cast<char>(code);
    EXPECT_EQ(Utf8ToWindows1252(Windows1252ToUtf8(all)), all);
}

struct Utf8Case {
    const char* Name;
    const char* Utf8;
    const char* Windows1252; ///< or what else it becomes
};
TEST(Windows1252, ConvertsOrReplaces)
{
    for (const Utf8Case& c : {Utf8Case{"Latin", "S\u00e3o Paulo", "S\xe3o Paulo"},
                              {"Euro", "\u20ac", "\x80"},
                              {"Dagger", "\u2020", "\x86"},
                              {"NoCode", "\u0141\u00f3d\u017a",
                               "?\xf3"
                               "d?"},
                              {"BeyondThePlane", "a\U0001F6E9z", "a?z"},
                              {"CutSequence", "a\xe2\x82", "a??"},
                              {"StrayContinuation", "\x80z", "?z"},
                              {"Overlong", "\xc0\xaf", "??"}})
        EXPECT_EQ(Utf8ToWindows1252(c.Utf8), c.Windows1252) << c.Name;
}

TEST(TerminalTexts, LeaveTextAloneAndEscapeTheRest)
{
    for (const Utf8Case& c : {Utf8Case{"Text", "S\u00e3o \\ \u20ac \U0001F6E9", "S\u00e3o \\ \u20ac \U0001F6E9"},
                              {"Colour", "\x1b[31mred", "\\x1b[31mred"},
                              {"BellAndDelete", "a\a\x7f", "a\\x07\\x7f"},
                              {"Lines", "a\r\nb", "a\\x0d\\nb"},
                              {"HighControls", "\u0085\u009b1m", "\\u0085\\u009b1m"},
                              {"LineSeparator", "\u2028", "\\u2028"},
                              {"TurnedRound", "\u202egnp.exe", "\\u202egnp.exe"},
                              {"NoUtf8", "\xff\xc3(", "\\xff\\xc3("},
                              {"Overlong", "\xe0\x80\xaf", "\\xe0\\x80\\xaf"},
                              {"Surrogate", "\xed\xa0\x80", "\\xed\\xa0\\x80"}})
        EXPECT_EQ(TerminalText(c.Utf8), c.Windows1252) << c.Name;
}

TEST(LetterCase, ChangesPlainLettersOnly)
{
    EXPECT_EQ(ToLower("Scenery\\\xc9T\xc9 [Area.005]"), "scenery\\\xc9t\xc9 [area.005]");
    EXPECT_EQ(ToUpper("gate a 12 \xe9"), "GATE A 12 \xe9");
}

TEST(TrimSpaces, RemovesSpacesAlone)
{
    EXPECT_EQ(TrimSpaces("  KSEA "), "KSEA");
    EXPECT_EQ(TrimSpaces("\tKSEA"), "\tKSEA");
    EXPECT_EQ(TrimSpaces("   "), "");
}

TEST(NumberText, IsPlainAndShortest)
{
    EXPECT_EQ(NumberText(270.0), "270");
    EXPECT_EQ(NumberText(-0.0), "0");
    EXPECT_EQ(NumberText(118.1), "118.1");
    EXPECT_EQ(NumberText(1e21), "1000000000000000000000");
    EXPECT_EQ(NumberText(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(NumberText(std::int32_t{-2147483647} - 1), "-2147483648");
    EXPECT_EQ(NumberText(5e-324).size(), 326U); // the longest zeros; must not be cut
}

struct BcdCase {
    std::uint32_t Word;
    const char* Text; ///< null where the word is not binary-coded decimal
};
TEST(BcdFrequency, ReadsHexadecimalDigitsAsDecimal)
{
    for (const BcdCase& c : {BcdCase{0x01181000, "118.1"},
                             {0x01212500, "121.25"},
                             {0, "0"},
                             {1, "0.0001"},
                             {0x00010000, "1"},
                             {0x99999999, "9999.9999"},
                             {0x0118A000, nullptr},
                             {0xF0000000, nullptr}}) {
        const auto text = BcdFrequency(static_cast<std::int32_t>(c.Word));
        EXPECT_EQ(text.value_or("none"), c.Text == nullptr ? "none" : c.Text);
    }
}
} // namespace
} // namespace corvane
