#include "demo/CsvReader.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
static ByteSpan AsBytes(std::string_view text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

TEST(CsvReader, ReadsLinesWithEitherEndAndEmptyFields)
{
    CsvReader csv("t.csv", AsBytes("a,b,c\r\n1,,x\r\n\n-2.5,7,"), "a,b,c");
    ASSERT_TRUE(csv.Next());
    EXPECT_EQ(csv.Number(0, 0, 10), 1);
    EXPECT_FALSE(csv.OptionalNumber(1, 0, 10));
    EXPECT_EQ(csv.Text(2), "x");
    ASSERT_TRUE(csv.Next());
    EXPECT_TRUE(csv.IsBlank());
    ASSERT_TRUE(csv.Next());
    EXPECT_EQ(csv.Number(0, -10, 10), -2.5);
    EXPECT_EQ(csv.Whole(1, 0, 10), 7);
    EXPECT_EQ(csv.Text(2), "");
    EXPECT_FALSE(csv.Next());
    EXPECT_FALSE(csv.Failure());
}

struct FaultCase {
    const char* Name;
    const char* Text;
    const char* Message;
};
class CsvFault : public testing::TestWithParam<FaultCase> {};
TEST_P(CsvFault, NamesFileAndLine)
{
    CsvReader csv("t.csv", AsBytes(GetParam().Text), "lat,n");
    while (csv.Next()) {
        csv.Number(0, -90, 90);
        csv.Whole(1, 0, 9);
    }
    ASSERT_TRUE(csv.Failure());
    EXPECT_EQ(csv.Failure()->Text(), GetParam().Message);
    EXPECT_FALSE(csv.Next());
}

INSTANTIATE_TEST_SUITE_P(
    Tables, CsvFault,
    testing::Values(
        FaultCase{"Empty", "", "t.csv line 0: does not begin with the columns lat,n"},
        FaultCase{"OtherColumns", "lat,m\n", "t.csv line 1: does not begin with the columns lat,n"},
        FaultCase{"TooFew", "lat,n\n1,1\n5\n", "t.csv line 3: has 1 fields instead of 2"},
        FaultCase{"TooMany", "lat,n\n1,1,\n", "t.csv line 2: has 3 fields instead of 2"},
        FaultCase{"Missing", "lat,n\n,1\n", "t.csv line 2: lat is \"\", not a number from -90 to 90"},
        FaultCase{"Letters", "lat,n\n1x,1\n", "t.csv line 2: lat is \"1x\", not a number from -90 to 90"},
        FaultCase{"NotANumber", "lat,n\nnan,1\n", "t.csv line 2: lat is \"nan\", not a number from -90 to 90"},
        FaultCase{"OutOfRange", "lat,n\n90.1,1\n", "t.csv line 2: lat is \"90.1\", not a number from -90 to 90"},
        FaultCase{"NotWhole", "lat,n\n1,1.5\n", "t.csv line 2: n is \"1.5\", not a whole number"}),
    [](const auto& row) { return std::string(row.param.Name); });
} // namespace corvane
