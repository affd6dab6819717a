#include "tests/world/WorldText.h"

#include <gtest/gtest.h>

#include <zlib.h>

namespace corvane {
namespace {
Bytes Packed(std::string_view text)
{
    z_stream z{};
    EXPECT_EQ(deflateInit2(&z, 9, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
    Bytes packed(text.size() + 1000);
    z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    z.avail_in = static_cast<uInt>(text.size());
    z.next_out = packed.data();
    z.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&z, Z_FINISH), Z_STREAM_END);
    packed.resize(packed.size() - z.avail_out);
    deflateEnd(&z);
    return packed;
}

struct Unpacked {
    std::string Text;
    std::optional<Error> Failure;
};

Unpacked Unpack(ByteSpan bytes)
{
    TextLines lines(std::make_unique<MemorySource>("packed", bytes));
    Unpacked unpacked;
    while (lines.Next())
        unpacked.Text.append(lines.Line()).append("\n");
    unpacked.Failure = lines.Failure();
    return unpacked;
}

std::string SomeText()
{
    std::string text;
    for (int i = 0; i < 30000; ++i) // more than one piece
        text += "111 " + std::to_string(i * 7919 % 100003) + "\n";
    return text;
}

TEST(Gzip, IsUnpackedByItsContent)
{
    const std::string text = SomeText();
    Bytes packed = Packed(text);
    EXPECT_EQ(Unpack(packed).Text, text);
    const Bytes second = Packed("more\n");
    packed.insert(packed.end(), second.begin(), second.end());
    packed.insert(packed.end(), 512, 0); // as tapes pad it
    const Unpacked both = Unpack(packed);
    EXPECT_EQ(both.Text, text + "more\n");
    EXPECT_FALSE(both.Failure);
}

TEST(Gzip, CutAnywhereIsAnError)
{
    const Bytes packed = Packed("one\ntwo\nthree\n");
    for (std::size_t n = 2; n < packed.size(); ++n) {
        const Unpacked cut = Unpack(ByteSpan(packed).first(n));
        ASSERT_TRUE(cut.Failure) << n;
        EXPECT_EQ(cut.Failure->Why, "its gzip data are cut off") << n;
    }
}

TEST(Gzip, DamageIsAnErrorThatNamesTheFile)
{
    const std::string text = SomeText();
    Bytes packed = Packed(text);
    packed[packed.size() - 6] ^= 1U; // the checksum
    const Unpacked damaged = Unpack(packed);
    ASSERT_TRUE(damaged.Failure);
    EXPECT_EQ(damaged.Failure->Text(), "packed: its gzip data are damaged (incorrect data check)");
}
} // namespace
} // namespace corvane
