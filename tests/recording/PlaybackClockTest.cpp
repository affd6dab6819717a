#include "recording/PlaybackClock.h"

#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {
class PlaybackClocks : public testing::Test {
protected:
    std::int64_t Now = 5000;
    PlaybackClock Clock{[this] { return Now; }};
};

TEST_F(PlaybackClocks, RunAtEachSpeedToTheMillisecond)
{
    for (const int speed : {1, 2, 5, 10, 30, 60}) {
        Clock.Open(1000000);
        Clock.SetSpeed(speed);
        Clock.Begin();
        for (int step = 0; step < 777; ++step) {
            Now += step % 7; // uneven ticks, some of them empty
            static_cast<void>(Clock.PositionMs());
        }
        // 777 is 111 times 0 + 1 + .. + 6 = 21
        EXPECT_EQ(Clock.PositionMs(), std::int64_t{111} * 21 * speed);
    }
}

TEST_F(PlaybackClocks, StandUntilTheyBeginAndWhilePaused)
{
    Clock.Open(100000);
    Now += 5000;
    EXPECT_EQ(Clock.PositionMs(), 0);
    Clock.Begin();
    Now += 300;
    Clock.SetPaused(true);
    Now += 7000;
    EXPECT_EQ(Clock.PositionMs(), 300);
    Clock.SetSpeed(10); // while paused
    Now += 50;
    Clock.SetPaused(false);
    Now += 20;
    EXPECT_EQ(Clock.PositionMs(), 500);
    Clock.Begin(); // again: goes on where it is
    Clock.SetSpeed(1);
    Now += 1;
    EXPECT_EQ(Clock.PositionMs(), 501);
}

TEST_F(PlaybackClocks, KeepSpeedAndTimeWithinTheirLimits)
{
    Clock.SetSpeed(0);
    EXPECT_EQ(Clock.Speed(), 1);
    Clock.SetSpeed(61);
    EXPECT_EQ(Clock.Speed(), 60);
    const std::int64_t length = std::numeric_limits<std::uint32_t>::max();
    Clock.Open(length);
    Clock.Begin();
    Now -= 4000; // a clock that errs
    EXPECT_EQ(Clock.PositionMs(), 0);
    Now = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(Clock.PositionMs(), length);
    Clock.Open(7);
    EXPECT_EQ(Clock.PositionMs(), 0) << "another recording begins at its beginning";
}
} // namespace
} // namespace corvane
