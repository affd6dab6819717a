#include "os/Files.h"

#include "tests/core/TemporaryFolder.h"

#include <cerrno>
#include <limits>
#include <memory>

namespace corvane {
namespace {
struct Close {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};
using File = std::unique_ptr<std::FILE, Close>;

TEST(Files, SeekBeyondFourGigabytes)
{
    const TemporaryFolder folder;
    const File file(OpenForWriting(folder.Path() / "sparse"));
    ASSERT_NE(file, nullptr);
    constexpr std::uint64_t Far = 5'000'000'000;
    ASSERT_TRUE(SeekTo(file.get(), Far)); // nothing is written there: the file stays empty
    EXPECT_EQ(ftello(file.get()), static_cast<off_t>(Far));
    EXPECT_FALSE(SeekTo(file.get(), std::numeric_limits<std::uint64_t>::max()));
    EXPECT_NE(errno, 0);
}

TEST(Files, ThatCannotBeOpenedSayWhy)
{
    const TemporaryFolder folder;
    errno = 0;
    EXPECT_EQ(OpenForReading(folder.Path() / "none"), nullptr);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(OpenForWriting(folder.Path() / "no/folder"), nullptr);
}
} // namespace
} // namespace corvane
