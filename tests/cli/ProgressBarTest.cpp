#include "cli/ProgressBar.h"

#include <gmock/gmock.h>

#include <sstream>

namespace corvane {
namespace {
/// Titles of scenery and names of files come from outside.
TEST(ProgressBar, KeepsToItsLine)
{
    std::ostringstream out;
    const ProgressBar::Clock::time_point start = ProgressBar::Clock::now();
    ProgressBar bar(out, true, "files");
    bar.Show(1, 2, "one\n\x1b]0;two\a", start + std::chrono::seconds(1));
    EXPECT_THAT(out.str(), testing::EndsWith("  one\\n\\x1b]0;two\\x07"));
    EXPECT_EQ(out.str().rfind('\x1b'), 1U); // its own
}
} // namespace
} // namespace corvane
