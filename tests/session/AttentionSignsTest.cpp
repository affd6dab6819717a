#include "session/AttentionSigns.h"

#include "session/AttentionTones.h"

#include <gtest/gtest.h>

#include <set>

namespace corvane {
namespace {
constexpr std::int64_t Start = 5000;
constexpr std::int64_t Settled = Start + AttentionSigns::SettlingMs;

AttentionOptions Everything()
{
    AttentionOptions options;
    options.Sound.fill(true);
    options.Flash.fill(true);
    return options;
}

TEST(AttentionSigns, AreOffAtFirstAndNothingIsKeptForLater)
{
    AttentionSigns signs(Start);
    signs.Note(AttentionSign::Chat, Settled);
    EXPECT_EQ(signs.Take({}, Settled), AttentionSigns::Due());
    EXPECT_EQ(signs.Take(Everything(), Settled + 100), AttentionSigns::Due());
}

TEST(AttentionSigns, SoundOnceASecondTheMostUrgentFirst)
{
    AttentionSigns signs(Start);
    std::int64_t now = Settled;
    int sounds = 0;
    for (; now <= Settled + 10000; now += 100) {
        signs.Note(AttentionSign::Chat, now);
        sounds += signs.Take(Everything(), now).Sound ? 1 : 0;
    }
    EXPECT_EQ(sounds, 11); // in ten seconds, the first one at once
    signs.Note(AttentionSign::Leave, now);
    signs.Note(AttentionSign::Alert, now);
    signs.Note(AttentionSign::Join, now);
    EXPECT_EQ(signs.Take(Everything(), now), AttentionSigns::Due()) << "too soon";
    now += 1000;
    EXPECT_EQ(signs.Take(Everything(), now).Sound, AttentionSign::Alert);
    now += 1000;
    EXPECT_EQ(signs.Take(Everything(), now), AttentionSigns::Due()) << "what was less urgent is dropped";
}

TEST(AttentionSigns, AreHeardAndSeenApart)
{
    AttentionOptions options;
    options.Sound[static_cast<std::size_t>(AttentionSign::Chat)] = true;
    options.Flash[static_cast<std::size_t>(AttentionSign::Alert)] = true;
    AttentionSigns signs(Start);
    signs.Note(AttentionSign::Chat, Settled);
    signs.Note(AttentionSign::Alert, Settled);
    EXPECT_EQ(signs.Take(options, Settled), (AttentionSigns::Due{AttentionSign::Chat, AttentionSign::Alert}));
}

TEST(AttentionSigns, WhoIsThereAtFirstDoesNotJoinAndSilenceIsToldOnce)
{
    AttentionSigns signs(Start);
    signs.Note(AttentionSign::Join, Settled - 1);
    EXPECT_EQ(signs.Take(Everything(), Settled - 1), AttentionSigns::Due());
    signs.Note(AttentionSign::Join, Settled);
    EXPECT_EQ(signs.Take(Everything(), Settled).Sound, AttentionSign::Join);
    std::int64_t now = Settled;
    int told = 0;
    for (const bool silent : {true, true, true, false, true}) {
        now += 2000;
        signs.NoteSilence(silent, now);
        told += signs.Take(Everything(), now).Flash ? 1 : 0;
    }
    EXPECT_EQ(told, 2);
}

TEST(AttentionTones, AreShortBeginAndEndAtRestAndDiffer)
{
    std::set<std::vector<std::int16_t>> tones;
    for (std::size_t i = 0; i < AttentionSignCount; ++i) {
        const std::vector<std::int16_t> tone = AttentionTone(static_cast<AttentionSign>(i));
        EXPECT_GT(tone.size(), 2000U);
        EXPECT_LE(tone.size(), static_cast<std::size_t>(ToneSamplesPerSecond / 2));
        EXPECT_EQ(tone.front(), 0);
        EXPECT_EQ(tone.back(), 0);
        tones.insert(tone);
    }
    EXPECT_EQ(tones.size(), AttentionSignCount);
}
} // namespace
} // namespace corvane
