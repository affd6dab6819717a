#include "practice/AloudText.h"
#include "practice/VoiceQueue.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {
struct AloudCase {
    const char* Line;
    const char* Speaker;
    const char* Said;
};

TEST(AloudTexts, SayNumbersAsControllersDo)
{
    constexpr AloudCase Cases[]{
        {"turning left heading 090, N348UC", "N348UC",
         "turning left heading zero niner zero, November three four eight Uniform Charlie"},
        {"descending 4,000, Lantern 412", "Lantern 412", "descending four thousand, Lantern four one two"},
        {"passing 12,500 climbing flight level 230", "X",
         "passing one two thousand five hundred climbing flight level "
         "two three zero"},
        {"climbing FL180", "X", "climbing flight level one eight zero"},
        {"speed 180 knots, Lantern 1200", "Lantern 1200", "speed one eight zero knots, Lantern one two zero zero"},
        {"cleared ILS runway 16R", "X", "cleared I L S runway one six right"},
        {"holding short runway 9L, ready", "X", "holding short runway niner left, ready"},
        {"squawking 1200", "X", "squawking one two zero zero"},
        {"taxi runway 36 via A B1", "X", "taxi runway three six via Alpha Bravo one"},
        {"contact 118.35", "X", "contact one one eight decimal three five"},
        {"landing KSEA.", "X", "landing Kilo Sierra Echo Alpha,"},
        {"", "X", ""},
        {"?! \x01 ,", "", ""},
    };
    for (const AloudCase& one : Cases)
        EXPECT_EQ(AloudText(one.Line, one.Speaker), one.Said) << one.Line;
}

TEST(VoiceQueues, SayOneLineAfterTheOtherAndDropWhatIsOld)
{
    VoiceQueue queue;
    for (int i = 0; i < 8; ++i)
        queue.Add(i % 2 == 0 ? "Alfa" : "Bravo", "line " + std::to_string(i), 0);
    const auto first = queue.Next(0);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->Text, "line two") << "two had no room";
    EXPECT_FALSE(queue.Next(5000)) << "one is being said";
    queue.Ended();
    const auto second = queue.Next(5000);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->Text, "line three");
    EXPECT_NE(second->Voice, first->Voice);
    queue.Ended();
    EXPECT_EQ(queue.Next(15000)->Voice, first->Voice) << "a voice a pilot";
    queue.Ended();
    EXPECT_FALSE(queue.Next(15001)) << "the rest has waited too long";

    queue.Add("Alfa", std::string(100000, 'x'), 20000);
    EXPECT_LE(queue.Next(20000)->Text.size(), VoiceQueue::LongestText);
    queue.Add("Alfa", "after a voice that never ends", 45000);
    EXPECT_FALSE(queue.Next(49999));
    EXPECT_TRUE(queue.Next(50000));
    queue.Clear();
    queue.Add("Alfa", "at once", 50001);
    EXPECT_TRUE(queue.Next(50001));
}
} // namespace
} // namespace corvane
