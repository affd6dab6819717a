#include "area/EntryMatch.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane {
namespace {
struct MatchCase {
    const char* Typed;
    std::size_t Count;
    int Meant; ///< -1: none
};
TEST(EntryMatches, TakeWhatIsMeantAndOnlyThat)
{
    const std::vector<std::string> entries = {
        "KSEA - Seattle-Tacoma", "KBFI - Boeing Field, Seattle", "PAKS - Kseattle Island", "PANAMA FIR", "Panama Fir",
        "KSEA2 - Other"};
    for (const MatchCase& c : {MatchCase{"ksea", 3, 0}, // its code, though others hold it
                               {"boeing", 1, 1},
                               {"seattle", 3, -1},
                               {"Panama Fir", 2, 4}, // letter by letter
                               {"panama fir", 2, -1},
                               {"KSEA - Seattle-Tacoma", 1, 0},
                               {"nowhere", 0, -1},
                               {"", 6, -1}}) {
        const EntryMatch match = MatchEntries(entries, c.Typed);
        EXPECT_EQ(match.Count, c.Count) << c.Typed;
        EXPECT_EQ(match.Meant ? static_cast<int>(*match.Meant) : -1, c.Meant) << c.Typed;
    }
}
} // namespace
} // namespace corvane
