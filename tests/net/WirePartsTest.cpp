#include "net/machine/DepartedPlayers.h"
#include "net/machine/IdAllotment.h"
#include "net/machine/Pieces.h"
#include "net/machine/RateLimiter.h"
#include "net/sockets/MessageQueue.h"
#include "net/wire/StreamFramer.h"
#include "net/wire/WireEncode.h"
#include "net/wire/WireText.h"
#include "tests/net/HexDump.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::directplay {
namespace {
using testing::ElementsAre;

TEST(Guids, ReadAndWriteTheirTextAndRefuseOthers)
{
    const std::string text = "{12345678-9ABC-DEF0-1122-334455667788}";
    const auto guid = ParseGuid(text);
    ASSERT_TRUE(guid);
    EXPECT_EQ(Bytes(guid->Value.begin(), guid->Value.end()),
              FromHex("78 56 34 12 BC 9A F0 DE 11 22 33 44 55 66 77 88"));
    EXPECT_EQ(GuidText(*guid), text);
    EXPECT_EQ(ParseGuid("{12345678-9abc-def0-1122-334455667788}"), guid);
    for (const char* bad : {"", "12345678-9ABC-DEF0-1122-334455667788", "{12345678-9ABC-DEF0-1122-33445566778G}",
                            "{12345678-9ABC-DEF0-1122-3344556677888}", "{123456789-ABC-DEF0-1122-334455667788}"})
        EXPECT_FALSE(ParseGuid(bad)) << bad;
}

TEST(SocketAddresses, ReadTheirTextAndRefuseOthers)
{
    EXPECT_EQ(ParseIp("192.168.1.20"), 0xC0A80114U);
    EXPECT_EQ(AddressText({0x7F000002, 2300}), "127.0.0.2:2300");
    for (const char* bad : {"", "1.2.3", "1.2.3.4.5", "1.2.3.256", "1.2.3.-4", "1..2.3", "host", "1.2.3.4 "})
        EXPECT_FALSE(ParseIp(bad)) << bad;
}

TEST(WireText, CrossesBetweenWindows1252AndUtf16)
{
    EXPECT_EQ(WideFromWindows1252("A\xE9\x80"), u"A\u00E9\u20AC"); // e acute, and the euro sign at 0x80
    EXPECT_EQ(Windows1252FromWide(u"A\u00E9\u20AC"), "A\xE9\x80");
    EXPECT_EQ(Windows1252FromWide(u"\u4E2D\xD800x"), "??x");       // no code there; half of a pair
    EXPECT_FALSE(ReadWideTextAt(FromHex("41 00 42 00"), 0));       // no end
    EXPECT_EQ(ReadWideTextAt(FromHex("00 41 00 00 00"), 1), u"A"); // at an odd place
    EXPECT_FALSE(ReadWideTextAt(Bytes(2 * MaxTextUnits + 4, 0x41), 0));
}

std::vector<std::size_t> FeedInParts(ByteSpan stream, std::size_t part, std::optional<DropReason>& reason)
{
    StreamFramer framer;
    std::vector<std::size_t> sizes;
    for (std::size_t at = 0; at < stream.size() && !reason; at += part)
        reason = framer.Feed(stream.subspan(at, std::min(part, stream.size() - at)),
                             [&](ByteSpan message) { sizes.push_back(message.size()); });
    return sizes;
}

TEST(StreamFraming, FindsTheMessagesHoweverTheBytesArrive)
{
    Bytes stream = EncodeMessage(Ping{1, 2}, 2300);
    const Bytes second = EncodePlayerMessage(1, 2, Bytes(300), 2300);
    const Bytes third = EncodeMessage(YouAreDead{}, 2300);
    stream.insert(stream.end(), second.begin(), second.end());
    stream.insert(stream.end(), third.begin(), third.end());
    for (std::size_t part = 1; part <= stream.size(); ++part) {
        std::optional<DropReason> reason;
        EXPECT_THAT(FeedInParts(stream, part, reason), ElementsAre(36, 328, 28)) << part;
        EXPECT_FALSE(reason) << part;
    }
}

TEST(StreamFraming, StopsAtTheFirstWordThatCannotStartAMessage)
{
    Bytes stream = EncodeMessage(Ping{1, 2}, 2300);
    for (const auto& [word, expected] : {std::pair{FromHex("24 00 B0 FB"), DropReason::BadMagic},
                                         std::pair{FromHex("13 00 B0 FA"), DropReason::Truncated},
                                         std::pair{FromHex("01 00 B4 FA"), DropReason::Oversized}}) {
        Bytes bad = stream;
        bad.insert(bad.end(), word.begin(), word.end());
        for (const std::size_t part : {std::size_t{1}, std::size_t{3}, bad.size()}) {
            std::optional<DropReason> reason;
            EXPECT_THAT(FeedInParts(bad, part, reason), ElementsAre(36));
            EXPECT_EQ(reason, expected);
        }
    }
}

TEST(IdAllotments, FollowTheRule)
{
    IdAllotment ids(0x4C3A9103);
    std::vector<WireId> inUse;
    for (const WireId expected : {0x4C3A9103U, 0x4C3B9102U, 0x4C389101U, 0x4C399100U, 0x4C3E9107U}) {
        EXPECT_EQ(ids.Next(inUse), expected);
        inUse.push_back(expected);
    }
    std::erase(inUse, 0x4C3B9102); // index 1 is free again, but the counter goes on: (5, 1)
    EXPECT_EQ(ids.Next(inUse), ((5U << 16) | 1U) ^ 0x4C3A9103U);
}

TEST(IdAllotments, GoOnBehindTheHighestWhenTakenOver)
{
    const std::vector<WireId> inUse{0x4C3A9103, 0x4C399100}; // (0, 0) and (3, 3)
    IdAllotment ids(0x4C3A9103, inUse);
    EXPECT_EQ(ids.Next(inUse), ((4U << 16) | 1U) ^ 0x4C3A9103U);
}

TEST(IdAllotments, NeverGiveAnIdThatMeansSomethingElse)
{
    IdAllotment zero(0); // (0, 0) would be everybody
    EXPECT_EQ(zero.Next({}), 1U << 16);
    IdAllotment signature(Signature);
    EXPECT_EQ(signature.Next({}), (1U << 16) ^ Signature);
}

TEST(IdAllotments, EndWhenEveryIndexIsTaken)
{
    std::vector<WireId> all;
    for (std::uint32_t i = 0; i <= 0xFFFF; ++i)
        all.push_back((0x10000 | i) ^ 0x123U);
    EXPECT_FALSE(IdAllotment(0x123, all).Next(all));
}

TEST(Departed, AreRememberedUntilOthersOfTheSameMachineTakeTheirPlaces)
{
    DepartedPlayers departed;
    EXPECT_TRUE(departed.Add(1, 100, u"Honest").empty());
    for (WireId id = 1000; id < 1000 + 10 * DepartedPlayers::MostOfMachine; ++id)
        departed.Add(id, 200, u"Flood");
    EXPECT_EQ(departed.NameOf(1), u"Honest");
    EXPECT_FALSE(departed.Contains(1000));
    EXPECT_TRUE(departed.Contains(1000 + 10 * DepartedPlayers::MostOfMachine - 1));
    std::vector<WireId> forgotten;
    for (WireId machine = 300; machine < 300 + DepartedPlayers::MostMachines; ++machine)
        for (const WireId id : departed.Add(machine << 16, machine, u"Other"))
            forgotten.push_back(id);
    EXPECT_THAT(forgotten, testing::Contains(1U)); // in the end there are too many machines
    EXPECT_FALSE(departed.NameOf(1));
}

Packet PieceOf(std::uint32_t index, std::uint32_t offset, Bytes data)
{
    return {Guid{{1}}, index, offset, 3, 6, std::move(data)};
}

TEST(Pieces, MakeTheMessageThatWasCut)
{
    Bytes message(5000);
    for (std::size_t i = 0; i < message.size(); ++i)
        message[i] = static_cast<std::uint8_t>(i * 7);
    const auto pieces = CutMessage(message, Guid{{9}}, 1332);
    ASSERT_EQ(pieces.size(), 4U); // 3 x 1332 = 3996, and 1004 more
    EXPECT_EQ(pieces.back().Data.size(), 1004U);
    PieceAssembler assembler;
    for (std::size_t i = 0; i + 1 < pieces.size(); ++i)
        EXPECT_TRUE(std::get<Bytes>(assembler.Add(1, pieces[i], Millis{0})).empty());
    EXPECT_EQ(std::get<Bytes>(assembler.Add(1, pieces.back(), Millis{0})), message);
    EXPECT_EQ(assembler.Unfinished(), 0U);
    EXPECT_EQ(assembler.Held(), 0U);
}

TEST(Pieces, ThatAreNotNextAreIgnored)
{
    PieceAssembler assembler;
    EXPECT_TRUE(std::get<Bytes>(assembler.Add(1, PieceOf(1, 2, {3, 4}), Millis{0})).empty()); // before the first
    assembler.Add(1, PieceOf(0, 0, {1, 2}), Millis{0});
    assembler.Add(1, PieceOf(0, 0, {1, 2}), Millis{0}); // twice
    assembler.Add(1, PieceOf(2, 4, {5, 6}), Millis{0}); // too early
    assembler.Add(1, PieceOf(1, 2, {3, 4}), Millis{0});
    EXPECT_THAT(std::get<Bytes>(assembler.Add(1, PieceOf(2, 4, {5, 6}), Millis{0})), ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(Pieces, ThatContradictEachOtherAreRefused)
{
    PieceAssembler assembler;
    assembler.Add(1, PieceOf(0, 0, {1, 2}), Millis{0});
    Packet other = PieceOf(1, 2, {3, 4});
    other.MessageSize = 7;
    EXPECT_EQ(std::get<DropReason>(assembler.Add(1, other, Millis{0})), DropReason::Malformed);
    EXPECT_EQ(std::get<DropReason>(assembler.Add(1, PieceOf(1, 3, {3, 4}), Millis{0})), DropReason::Malformed);
    EXPECT_EQ(assembler.Unfinished(), 0U); // the gap ended the message
}

TEST(Pieces, AreCappedForEachMachineAndForgotten)
{
    PieceAssembler assembler;
    for (std::uint8_t i = 0; i < MaxUnfinishedPerMachine; ++i)
        assembler.Add(1, Packet{Guid{{i}}, 0, 0, 2, 2, {1}}, Millis{i});
    EXPECT_EQ(std::get<DropReason>(assembler.Add(1, Packet{Guid{{99}}, 0, 0, 2, 2, {1}}, Millis{0})),
              DropReason::Flooding);
    assembler.Add(2, Packet{Guid{{99}}, 0, 0, 2, 2, {1}}, Millis{100});
    EXPECT_EQ(assembler.Unfinished(), 17U);
    assembler.Expire(Millis{105}, Millis{100}); // those begun at 0..4 are older than 100
    EXPECT_EQ(assembler.Unfinished(), 12U);
    assembler.Forget(1);
    EXPECT_EQ(assembler.Unfinished(), 1U);
    EXPECT_EQ(assembler.Held(), 1U);
}

TEST(RateLimits, CountEachSourceEachSecond)
{
    RateLimiter limiter;
    for (unsigned i = 0; i < MaxAnswersPerSecond; ++i)
        EXPECT_TRUE(limiter.Allow(1, Millis{i}));
    EXPECT_FALSE(limiter.Allow(1, Millis{999}));
    EXPECT_TRUE(limiter.Allow(2, Millis{999}));
    EXPECT_TRUE(limiter.Allow(1, Millis{1000}));
}

TEST(MessageQueues, KeepOrderAndCountForEachPlayer)
{
    MessageQueue queue(100000);
    queue.Push(1, {10, 20, {1}}, true);
    queue.Push(1, {10, 21, {2}}, true);
    queue.Push(2, {11, 20, {3}}, true);
    EXPECT_EQ(queue.CountFor(20), 2U);
    queue.Drop(21);
    EXPECT_EQ(queue.CountFor(21), 0U);
    EXPECT_THAT(queue.Pop()->Content, ElementsAre(1));
    EXPECT_THAT(queue.Pop()->Content, ElementsAre(3));
    EXPECT_FALSE(queue.Pop());
    EXPECT_EQ(queue.Size(), 0U);
}

TEST(MessageQueues, StopOneMachineWithoutTheOthers)
{
    MessageQueue queue(1000);
    EXPECT_TRUE(queue.Push(1, {1, 2, Bytes(900)}, true));
    EXPECT_FALSE(queue.Push(1, {1, 2, Bytes(900)}, false));
    EXPECT_TRUE(queue.Push(1, {1, 2, Bytes(900)}, true)); // what has been read from a stream is never lost
    EXPECT_TRUE(queue.IsOver(1));
    EXPECT_FALSE(queue.IsOver(2));
    EXPECT_TRUE(queue.Push(2, {1, 2, Bytes(100)}, false));
    queue.Pop();
    EXPECT_FALSE(queue.HasRoom(1)); // 900 and some left of 1000
    queue.Pop();
    EXPECT_TRUE(queue.HasRoom(1));
}
} // namespace
} // namespace corvane::directplay
