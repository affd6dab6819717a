#include "core/ByteSource.h"

#include "core/AtomicFile.h"
#include "tests/core/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>

namespace corvane {
namespace {
/// A file of several blocks and a bit, whose bytes tell where they stand.
class ByteSourceTest : public testing::Test {
protected:
    static constexpr std::size_t Size = 700'001;

    ByteSourceTest() : m_bytes(Size)
    {
        std::mt19937 random(2002);
        std::generate(m_bytes.begin(), m_bytes.end(), [&] { return static_cast<std::uint8_t>(random()); });
        EXPECT_TRUE(WriteFileAtomically(File(), m_bytes));
        auto opened = OpenFileSource(File());
        EXPECT_TRUE(opened) << opened.error().Text();
        m_source = *std::move(opened);
    }

    [[nodiscard]] std::filesystem::path File() const { return m_folder.Path() / "bytes"; }

    /// Whether a view begins with the file's bytes there, and has as many as were asked for or all that are left.
    [[nodiscard]] bool Tells(const Result<ByteSpan>& view, std::size_t offset, std::size_t count) const
    {
        const std::size_t left = Size - std::min(offset, Size);
        return view && view->size() >= std::min(count, left) && view->size() <= left &&
               std::equal(view->begin(), view->end(), m_bytes.begin() + static_cast<std::ptrdiff_t>(Size - left));
    }

    const TemporaryFolder m_folder;
    Bytes m_bytes;
    std::unique_ptr<ByteSource> m_source;
};

TEST_F(ByteSourceTest, TellsTheFilesBytesFromOneEndToTheOther)
{
    for (const std::size_t step : {7U, 4096U, 131071U, 131072U, 131073U, 300'000U}) {
        for (std::size_t at = 0; at <= Size; at += step)
            ASSERT_TRUE(Tells(m_source->View(at, step + 100), at, step + 100)) << step << ' ' << at;
        ASSERT_TRUE(Tells(m_source->View(0, 1), 0, 1)) << "back to the start";
    }
}

TEST_F(ByteSourceTest, TellsTheFilesBytesInAnyOrder)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> anywhere(0, Size + 1000);
    std::uniform_int_distribution<std::size_t> size(0, 20'000);
    for (int i = 0; i < 2000; ++i) {
        const std::size_t at = anywhere(random);
        const std::size_t count = i % 50 == 0 ? Size : size(random);
        const auto view = i % 3 == 0 ? m_source->ViewAlone(at, count) : m_source->View(at, count);
        ASSERT_TRUE(Tells(view, at, count)) << i << ": " << at << ' ' << count;
    }
}

TEST_F(ByteSourceTest, TellsWhatIsLeftOfAFileThatHasBecomeShorter)
{
    ASSERT_TRUE(m_source->View(0, 1));
    std::filesystem::resize_file(File(), 200'000);
    const auto view = m_source->View(199'000, 5000);
    ASSERT_TRUE(view);
    EXPECT_EQ(view->size(), 1000);
    EXPECT_TRUE(std::equal(view->begin(), view->end(), m_bytes.begin() + 199'000));
    const auto beyond = m_source->View(600'000, 100);
    ASSERT_TRUE(beyond);
    EXPECT_TRUE(beyond->empty());
}
} // namespace
} // namespace corvane
