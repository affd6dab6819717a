#include "core/Bytes.h"

#include "core/BglReader.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {
const Bytes Sample = {0x01, 0x80, 0xFF, 0xFF, 0x00, 0x00, 0x80, 0x3F, 'A', 0, 'B'};

TEST(BglReader, ReadsLittleEndianWithSign)
{
    BglReader file(Sample);
    EXPECT_EQ(file.ReadU8(1), 0x80);
    EXPECT_EQ(file.ReadI16(0), -32767);
    EXPECT_EQ(file.ReadI24(0), -32767); // FF 80 01 from the top
    EXPECT_EQ(file.ReadI32(0), static_cast<std::int32_t>(0xFFFF8001));
    EXPECT_EQ(file.ReadI24(4), -8388608);
    EXPECT_EQ(file.ReadF32(4), 1.0F);
    EXPECT_EQ(file.ReadText(8, 3), "AB");
    EXPECT_FALSE(file.Failed());
}

struct EndCase {
    const char* Name;
    std::int64_t Offset;
    bool Fails;
};
TEST(BglReader, GivesZeroPastTheEndAndFailsAcrossIt)
{
    for (const EndCase& c : {EndCase{"LastWhole", 7, false},
                             {"EndsOnTheByteBehind", 8, false},
                             {"ReachesOver", 9, true},
                             {"LastByte", 10, true},
                             {"TheByteBehind", 11, true},
                             {"PastIt", 12, false},
                             {"FarPast", std::int64_t{1} << 40, false},
                             {"Negative", -1, true},
                             {"FarNegative", -(std::int64_t{1} << 40), true}}) {
        BglReader file(Sample);
        file.ReadI32(c.Offset);
        EXPECT_EQ(file.Failed(), c.Fails) << c.Name;
        file.ClearFailure();
        EXPECT_EQ(file.ReadI32(12), 0) << c.Name;
        EXPECT_FALSE(file.Failed()) << c.Name;
    }
}

TEST(BglReader, HoldsAZeroBehindTheFile)
{
    BglReader file(Sample);
    EXPECT_EQ(file.ReadI32(8), 0x00420041);
    EXPECT_EQ(file.ReadI24(9), 0x004200);
    EXPECT_EQ(file.ReadI16(10), 0x42);
    EXPECT_EQ(file.ReadU8(11), 0);
    EXPECT_EQ(file.ReadText(10, 2), "B");
    EXPECT_EQ(file.ReadText(11, 1), "");
    EXPECT_FALSE(file.Failed());
    EXPECT_EQ(file.ReadText(12, 1), "");
    EXPECT_TRUE(file.Failed());
}

TEST(BglReader, FailsOnTextsBeyondTheEndOnly)
{
    BglReader file(Sample);
    EXPECT_EQ(file.ReadText(100, 0), "");
    EXPECT_EQ(file.ReadText(-5, -7), "");
    EXPECT_EQ(file.ReadNavText(8, 3), "AB");
    EXPECT_FALSE(file.Failed());
    EXPECT_EQ(file.ReadNavText(8, 4), "");
    EXPECT_TRUE(file.Failed());
    file.ClearFailure();
    EXPECT_EQ(file.ReadText(9, 0x7FFFFFFFFFFFFFFF), "");
    EXPECT_TRUE(file.Failed());
}

TEST(ByteReader, StaysFailedAndGivesZeros)
{
    const Bytes bytes = {0x03, 0x00, 'a', 'b'};
    ByteReader reader(bytes);
    EXPECT_EQ(reader.ReadText16(), ""); // announces three characters, two are there
    EXPECT_TRUE(reader.Failed());
    EXPECT_EQ(reader.ReadU8(), 0);
    EXPECT_TRUE(reader.Failed());
}

TEST(ByteWriter, CutsTextsThatTheFormatCannotHold)
{
    Bytes bytes;
    ByteWriter(bytes).WriteText16(std::string(70000, 'x'));
    ASSERT_EQ(bytes.size(), 2U + 65535U);
    EXPECT_EQ(bytes[0], 0xFF);
    EXPECT_EQ(bytes[1], 0xFF);
}
} // namespace
} // namespace corvane
