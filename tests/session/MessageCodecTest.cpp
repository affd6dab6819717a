#include "session/MessageCodec.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace corvane {
namespace {
Bytes Hex(std::string_view digits)
{
    Bytes bytes;
    unsigned value = 0;
    int count = 0;
    for (const char c : digits) {
        if (c == ' ')
            continue;
        value = value * 16 + static_cast<unsigned>(c <= '9' ? c - '0' : c - 'A' + 10);
        if (++count % 2 == 0) {
            bytes.push_back(static_cast<std::uint8_t>(value));
            value = 0;
        }
    }
    return bytes;
}

// Speed 100 m/s, heading step 512, 45 degrees north (5000875 m), 90 degrees west, 1000 m.
constexpr std::string_view FullBytes = "19100000 32000000"
                                       "11111111 22222222 33333333 44444444 55555555"
                                       "00006400 66666666 00080000 AB4E4C00 000000C0 E8030000"
                                       "7777 8888 9999";
constexpr std::string_view ShortBytes = "18100000 22000000"
                                        "11111111 22222222 33333333"
                                        "00080000 AB4E4C00 000000C0 E8030000"
                                        "7777 8888 9999";

struct DecodeCase {
    const char* Name;
    std::string_view Digits;
    Message Expected;
};
class Decoding : public testing::TestWithParam<DecodeCase> {};
TEST_P(Decoding, ReadsFieldsInOrder)
{
    const Result<Message> message = DecodeMessage(Hex(GetParam().Digits));
    ASSERT_TRUE(message) << message.error().Text();
    EXPECT_EQ(*message, GetParam().Expected);
}
INSTANTIATE_TEST_SUITE_P(
    MessageCodec, Decoding,
    testing::Values(
        DecodeCase{"JoinRequest", "01100000 00000000", PlainMessage{MessageType::JoinRequest}},
        DecodeCase{"UnreadPayload", "16100000 FFFFFF7F", PlainMessage{MessageType::RemovedByHost}},
        DecodeCase{"PilotAnnounce", "03100000 04000000 FEFFFFFF", AnnounceMessage{MessageType::PilotAnnounce, -2}},
        DecodeCase{"AnnounceOfNoDeclaredLength", "04100000 00000000 07000000 AA",
                   AnnounceMessage{MessageType::ObserverAnnounce, 7}},
        DecodeCase{"PositionFull", FullBytes, PositionMessage{MessageType::PositionFull, 45, -90, 3281, 180, 194}},
        DecodeCase{"PositionShort", ShortBytes, PositionMessage{MessageType::PositionShort, 45, -90, 3281, 180, 0}},
        DecodeCase{"AircraftTitle", "0E100000 05000000 0100 423733", AircraftInfoMessage{"Jet Plane", "B73"}},
        DecodeCase{"TitleGoesOnBehindZeros", "0E100000 08000000 0300 4200 00 3733 00",
                   AircraftInfoMessage{"Helicopter", "B73"}},
        DecodeCase{"EmptyTitle", "0E100000 02000000 0000", AircraftInfoMessage{"Piston Plane", ""}},
        DecodeCase{"TitleOfNegativeLength", "0E100000 00000080 0900 41", AircraftInfoMessage{"", ""}},
        DecodeCase{"Chat", "23100000 05000000 48692100", ChatTextMessage{"Hi!"}},
        DecodeCase{"ChatSkipsZeros", "23100000 06000000 0048006900", ChatTextMessage{"Hi"}},
        DecodeCase{"ChatOfLengthOne", "23100000 01000000 48", ChatTextMessage{""}},
        DecodeCase{"ChatOfLengthZero", "23100000 00000000", ChatTextMessage{""}},
        DecodeCase{"ChatOfNegativeLength", "23100000 FFFFFFFF 48", ChatTextMessage{""}},
        DecodeCase{"UnknownType", "34120000 03000000 010203", UnknownMessage{0x1234, 3}},
        DecodeCase{"SystemType", "31000000 00000000", UnknownMessage{0x31, 0}}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(MessageCodec, AMessageThatEndsInsideItsFieldsIsAnError)
{
    for (const std::string_view whole :
         {FullBytes, ShortBytes, std::string_view("03100000 04000000 01000000"),
          std::string_view("0E100000 05000000 0100 423733"), std::string_view("23100000 05000000 48692100"),
          std::string_view("01100000 00000000")}) {
        const Bytes bytes = Hex(whole);
        ASSERT_TRUE(DecodeMessage(bytes));
        for (std::size_t n = 0; n < bytes.size(); ++n)
            EXPECT_FALSE(DecodeMessage(ByteSpan(bytes).first(n))) << whole << " cut to " << n;
    }
    EXPECT_EQ(DecodeMessage(Hex("23100000 FFFFFF7F 4869")).error(),
              Fail("ChatText", "ends after 10 of 2147483654 bytes"));
    EXPECT_EQ(DecodeMessage(Hex("2310")).error().What, "message");
}

struct EncodeCase {
    const char* Name;
    Message Original;
    std::string_view Expected;
};
class Encoding : public testing::TestWithParam<EncodeCase> {};
TEST_P(Encoding, WritesTheLayout)
{
    EXPECT_EQ(EncodeMessage(GetParam().Original), Hex(GetParam().Expected));
}
INSTANTIATE_TEST_SUITE_P(
    MessageCodec, Encoding,
    testing::Values(
        EncodeCase{"JoinRetry", PlainMessage{MessageType::JoinRetry}, "08100000 00000000"},
        EncodeCase{"ObserverAnnounce", AnnounceMessage{MessageType::ObserverAnnounce, 0x01020304},
                   "04100000 04000000 04030201"},
        EncodeCase{"ChatOfTwo", ChatTextMessage{"Hi"}, "23100000 04000000 4869 00000000"},
        EncodeCase{"EmptyChat", ChatTextMessage{""}, "23100000 00000000"},
        EncodeCase{"ChatBeyondAscii", ChatTextMessage{"\x80"}, "23100000 02000000 80 0000"},
        EncodeCase{"AircraftInfo", AircraftInfoMessage{"Jet Plane", "B73"}, "0E100000 05000000 0100 423733"},
        EncodeCase{"PositionShort", PositionMessage{MessageType::PositionShort, 45, -90, 3281, 180, 0},
                   "18100000 22000000 00000000 00000000 00000000 00080000 AB4E4C00 000000C0 E8030000 0000 0000 0000"},
        EncodeCase{"PositionFull", PositionMessage{MessageType::PositionFull, 45, -90, 3281, 180, 194},
                   "19100000 32000000 00000000 00000000 00000000 00000000 00000000 00006400 00000000"
                   "00080000 AB4E4C00 000000C0 E8030000 0000 0000 0000"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(MessageCodec, WhatWasDecodedIsEncodedToTheSame)
{
    for (std::int16_t heading = 0; heading <= 360; ++heading) {
        const PositionMessage position{MessageType::PositionFull, 45, -90, 3281, heading, 194};
        const Result<Message> again = DecodeMessage(EncodeMessage(position));
        ASSERT_TRUE(again);
        EXPECT_EQ(*again, Message(position));
    }
}

TEST(MessageCodec, NamesAndTypesAgree)
{
    EXPECT_EQ(MessageTypeName(MessageType::AircraftInfoRequest), "AircraftInfoRequest");
    EXPECT_EQ(MessageTypeFromName("ChatText"), MessageType::ChatText);
    EXPECT_EQ(MessageTypeFromName("chattext"), std::nullopt);
    EXPECT_EQ(MessageTypeName(static_cast<MessageType>(0x1009)), "");
}
} // namespace
} // namespace corvane
