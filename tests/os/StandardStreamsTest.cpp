#include "os/StandardStreams.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <unistd.h>

namespace corvane {
namespace {
TEST(StandardStreams, AreReadWithoutWaiting)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    EXPECT_FALSE(IsTerminal(ends[0]));

    std::array<char, 4> buffer{};
    EXPECT_EQ(ReadWaiting(ends[0], buffer), std::nullopt);
    ASSERT_EQ(write(ends[1], "hello", 5), 5);
    EXPECT_EQ(ReadWaiting(ends[0], buffer), 4U);
    EXPECT_EQ(std::string_view(buffer.data(), 4), "hell");
    EXPECT_EQ(ReadWaiting(ends[0], buffer), 1U);
    EXPECT_EQ(ReadWaiting(ends[0], buffer), std::nullopt);
    close(ends[1]);
    EXPECT_EQ(ReadWaiting(ends[0], buffer), 0U);
    close(ends[0]);
    EXPECT_EQ(ReadWaiting(-1, buffer), std::nullopt); // poll ignores it: no input, ever
}
} // namespace
} // namespace corvane
