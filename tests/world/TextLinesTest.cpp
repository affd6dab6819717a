#include "tests/world/WorldText.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {
/// Gives its bytes a few at a time.
class Trickle final : public ByteSource {
public:
    Trickle(std::string bytes, std::size_t piece) : m_bytes(std::move(bytes)), m_piece(piece) {}
    [[nodiscard]] const std::string& Name() const noexcept override { return m_name; }
    [[nodiscard]] std::uint64_t Size() const noexcept override { return m_bytes.size(); }
    Result<ByteSpan> View(std::uint64_t offset, std::size_t count) override
    {
        const ByteSpan rest = AsBytes(m_bytes).subspan(std::min<std::size_t>(offset, m_bytes.size()));
        return rest.first(std::min(rest.size(), std::max(count, m_piece)));
    }

private:
    std::string m_name = "trickle";
    std::string m_bytes;
    std::size_t m_piece;
};

TEST(TextLines, AreTheSameInPiecesOfAnySize)
{
    const std::string text = "\xEF\xBB\xBFone\r\n\r\n  two\nthree\r\rx\n\nlast";
    const std::vector<std::string> expected = {"one", "", "  two", "three\r\rx", "", "last"};
    for (std::size_t piece = 2; piece <= text.size(); ++piece) {
        TextLines lines(std::make_unique<Trickle>(text, piece));
        std::vector<std::string> read;
        while (lines.Next())
            read.emplace_back(lines.Line());
        EXPECT_EQ(read, expected) << piece;
        EXPECT_EQ(lines.Number(), 6);
    }
}

TEST(TextLines, KeepABoundedPartOfALongLine)
{
    TextLines lines(std::make_unique<Trickle>(std::string(TextLines::MostLineBytes * 3, 'a') + "\nb\n", 100000));
    ASSERT_TRUE(lines.Next());
    EXPECT_TRUE(lines.TooLong());
    EXPECT_EQ(lines.Line().size(), TextLines::MostLineBytes);
    ASSERT_TRUE(lines.Next());
    EXPECT_FALSE(lines.TooLong());
    EXPECT_EQ(lines.Line(), "b");
}
} // namespace
} // namespace corvane
