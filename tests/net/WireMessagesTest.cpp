#include "net/wire/WireDecode.h"
#include "net/wire/WireEncode.h"
#include "tests/net/HexDump.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::directplay {
namespace {
constexpr WireId HostSystem = 0x4C3A9103;
constexpr WireId HostPlayer = 0x4C3B9102;
constexpr WireId JoinerSystem = 0x4C389101;
constexpr WireId JoinerPlayer = 0x4C399100;
constexpr WireId TheGroup = 0x4C3E9107;
constexpr std::uint32_t JoinerIp = 0xC0A80114; // 192.168.1.20
constexpr ServiceData Unfilled{{0, 2300}, {0, 2350}};

Guid GuidOf(std::string_view text)
{
    return ParseGuid(text).value();
}

SessionDescription Practice()
{
    SessionDescription description;
    description.Flags = 0x44;
    description.Instance = GuidOf("{01020304-0506-0708-090A-0B0C0D0E0F10}");
    description.Application = GuidOf("{12345678-9ABC-DEF0-1122-334455667788}");
    description.MaxPlayers = 8;
    description.CurrentPlayers = 3;
    description.IdKey = 0x4C3A9103;
    return description;
}

constexpr std::string_view PracticeHex = "50 00 00 00 44 00 00 00 04 03 02 01 06 05 08 07 09 0A 0B 0C 0D 0E 0F 10"
                                         "78 56 34 12 BC 9A F0 DE 11 22 33 44 55 66 77 88 08 00 00 00 03 00 00 00"
                                         "00 00 00 00 00 00 00 00 03 91 3A 4C 00 00 00 00"
                                         "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
constexpr std::string_view UnfilledHex = "02 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00"
                                         "02 00 09 2E 00 00 00 00 00 00 00 00 00 00 00 00";

std::string Join(std::initializer_list<std::string_view> parts)
{
    std::string text;
    for (const std::string_view part : parts)
        text += part;
    return text;
}

PackedPlayer JoinerRecord()
{
    PackedPlayer record;
    record.Flags = 0xD;
    record.Id = JoinerSystem;
    record.SystemId = JoinerSystem;
    record.Service = Unfilled;
    return record;
}

PackedPlayer Pilot()
{
    PackedPlayer record;
    record.Flags = PlayerIsLocal;
    record.Id = JoinerPlayer;
    record.ShortName = u"Bo";
    record.LongName = u"P";
    record.Service = Unfilled;
    record.SystemId = JoinerSystem;
    return record;
}

// 48 + 6 + 4 + 32 = 90 bytes
constexpr std::string_view PilotHex = "5A 00 00 00 08 00 00 00 00 91 39 4C 06 00 00 00 04 00 00 00 20 00 00 00"
                                      "00 00 00 00 00 00 00 00 01 91 38 4C 30 00 00 00 0E 00 00 00 00 00 00 00"
                                      "42 00 6F 00 00 00 50 00 00 00";

PackedPlayer MarkerGroup()
{
    PackedPlayer record;
    record.Flags = PlayerIsLocal;
    record.Id = TheGroup;
    record.ShortName = u"G";
    record.SystemId = HostSystem;
    record.Members = {HostPlayer};
    return record;
}

SuperEnumPlayersReply TableOfThree()
{
    SuperEnumPlayersReply table;
    table.Description = Practice();
    table.Description.Flags = 0x444;
    table.Description.CurrentPlayers = 1;
    table.Name = u"Practice";
    table.Password = u"cat";
    const ServiceData filled{{JoinerIp, 2300}, {JoinerIp, 2350}};
    table.Players = {{0xF, HostSystem, 14, u"", u"", {}, Unfilled, {}, 0},
                     {0x8, HostPlayer, HostSystem, u"Instructor", u"Player", {}, Unfilled, {}, 0},
                     {0x5, JoinerSystem, 14, u"", u"", {}, filled, {}, 0}};
    table.Groups = {{0x8, TheGroup, HostSystem, u"FS61_REFUSE_PARAMS", u"", {}, std::nullopt, {HostPlayer}, 0}};
    return table;
}

EnumSessionsReply Lothair()
{
    return {Practice(), u"LOTHAIR"};
}

struct WireCase {
    const char* Name;
    WireMessage Message;
    Bytes Encoded;
};

std::vector<WireCase> Cases()
{
    const Guid piece = GuidOf("{12345678-9ABC-DEF0-1122-334455667788}");
    constexpr std::string_view PieceGuid = "78 56 34 12 BC 9A F0 DE 11 22 33 44 55 66 77 88";
    return {
        {"EnumSessionsWithPassword", EnumSessions{GuidOf("{0BA552A0-E0FF-11CF-9C4E-00A0C905425E}"), u"Password", 2},
         FromHex("46 00 B0 FA 02 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00 70 6C 61 79 02 00 0E 00 A0 52 A5 0B"
                 "FF E0 CF 11 9C 4E 00 A0 C9 05 42 5E 20 00 00 00 02 00 00 00 50 00 61 00 73 00 73 00 77 00 6F 00"
                 "72 00 64 00 00 00")},
        {"EnumSessionsOfAnyApplication", EnumSessions{{}, std::nullopt, 1},
         FromHex("34 00 B0 FA 02 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00 70 6C 61 79 02 00 0E 00 00 00 00 00"
                 "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 00 00 00")},
        {"EnumSessionsReply", EnumSessionsReply{Practice(), u"Practice"},
         Dump("82 00", "01", Join({PracticeHex, "5C 00 00 00 50 00 72 00 61 00 63 00 74 00 69 00 63 00 65 00 00 00"}))},
        {"EnumSessionsReplyOf128Bytes", Lothair(),
         Dump("80 00", "01", Join({PracticeHex, "5C 00 00 00 4C 00 4F 00 54 00 48 00 41 00 49 00 52 00 00 00"}))},
        {"EnumSessionsReplyUnnamed", EnumSessionsReply{Practice(), u""},
         Dump("70 00", "01", Join({PracticeHex, "00 00 00 00"}))},
        {"EnumPlayer", EnumPlayer{}, Dump("1C 00", "04", "")},
        {"RequestPlayerId", RequestPlayerId{9}, Dump("20 00", "05", "09 00 00 00")},
        {"RequestGroupId", RequestGroupId{}, Dump("20 00", "06", "08 00 00 00")},
        {"RequestPlayerReply", RequestPlayerReply{JoinerSystem, 0},
         Dump("44 00", "07",
              "01 91 38 4C 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
              "00 00 00 00 00 00 00 00 00 00 00 00")},
        {"RequestPlayerRefused", RequestPlayerReply{0, ResultNoNewPlayers},
         Dump("44 00", "07",
              "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
              "00 00 00 00 00 00 00 00 4A 01 77 88")},
        {"AddForwardRequest", AddForwardRequest{JoinerSystem, JoinerRecord(), u"cat", 123456},
         FromHex("8C 00 B0 FA 02 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00 70 6C 61 79 13 00 0E 00 00 00 00 00"
                 "01 91 38 4C 00 00 00 00 1C 00 00 00 6C 00 00 00 50 00 00 00 0D 00 00 00 01 91 38 4C 00 00 00 00"
                 "00 00 00 00 20 00 00 00 00 00 00 00 00 00 00 00 01 91 38 4C 30 00 00 00 0E 00 00 00 00 00 00 00"
                 "02 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00 02 00 09 2E 00 00 00 00 00 00 00 00 00 00 00 00"
                 "63 00 61 00 74 00 00 00 40 E2 01 00")},
        {"AddForwardReply", AddForwardReply{ResultInvalidPassword}, Dump("20 00", "24", "54 01 77 88")},
        {"AddForward", AddForward{HostSystem, JoinerPlayer, Pilot()},
         Dump("8A 00", "2E",
              Join({"03 91 3A 4C 00 91 39 4C 00 00 00 00 1C 00 00 00 00 00 00 00", PilotHex, UnfilledHex}))},
        {"AddForwardAck", AddForwardAck{JoinerSystem}, Dump("20 00", "2F", "01 91 38 4C")},
        {"SuperEnumPlayersReply", TableOfThree(),
         FromHex("A4 01 B0 FA 02 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00 70 6C 61 79 29 00 0E 00 03 00 00 00"
                 "01 00 00 00 8E 00 00 00 00 00 00 00 24 00 00 00 74 00 00 00 86 00 00 00 50 00 00 00 44 04 00 00"
                 "04 03 02 01 06 05 08 07 09 0A 0B 0C 0D 0E 0F 10 78 56 34 12 BC 9A F0 DE 11 22 33 44 55 66 77 88"
                 "08 00 00 00 01 00 00 00 00 00 00 00 00 00 00 00 03 91 3A 4C 00 00 00 00 00 00 00 00 00 00 00 00"
                 "00 00 00 00 00 00 00 00 50 00 72 00 61 00 63 00 74 00 69 00 63 00 65 00 00 00 63 00 61 00 74 00"
                 "00 00 10 00 00 00 0F 00 00 00 03 91 3A 4C 04 00 00 00 0E 00 00 00 20 02 00 08 FC 00 00 00 00 00"
                 "00 00 00 00 00 00 00 02 00 09 2E 00 00 00 00 00 00 00 00 00 00 00 00 10 00 00 00 08 00 00 00 02"
                 "91 3B 4C 07 00 00 00 03 91 3A 4C 49 00 6E 00 73 00 74 00 72 00 75 00 63 00 74 00 6F 00 72 00 00"
                 "00 50 00 6C 00 61 00 79 00 65 00 72 00 00 00 20 02 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00"
                 "02 00 09 2E 00 00 00 00 00 00 00 00 00 00 00 00 10 00 00 00 05 00 00 00 01 91 38 4C 04 00 00 00"
                 "0E 00 00 00 20 02 00 08 FC C0 A8 01 14 00 00 00 00 00 00 00 00 02 00 09 2E C0 A8 01 14 00 00 00"
                 "00 00 00 00 00 10 00 00 00 08 00 00 00 07 91 3E 4C 41 00 00 00 03 91 3A 4C 46 00 53 00 36 00 31"
                 "00 5F 00 52 00 45 00 46 00 55 00 53 00 45 00 5F 00 50 00 41 00 52 00 41 00 4D 00 53 00 00 00 01"
                 "02 91 3B 4C")},
        {"EnumPlayersReply", EnumPlayersReply{Practice(), u"", u"", {Pilot()}, {}},
         Dump("E2 00", "03",
              Join({"01 00 00 00 00 00 00 00 74 00 00 00 00 00 00 00 24 00 00 00 00 00 00 00 00 00 00 00", PracticeHex,
                    PilotHex, UnfilledHex}))},
        {"CreatePlayer", CreatePlayerMessage{Pilot()},
         Dump("90 00", "08",
              Join({"00 00 00 00 00 91 39 4C 00 00 00 00 1C 00 00 00 00 00 00 00", PilotHex, UnfilledHex,
                    "00 00 00 00 00 00"}))},
        {"CreatePlayerVerify", CreatePlayerVerify{Pilot()},
         Dump("90 00", "38",
              Join({"00 00 00 00 00 91 39 4C 00 00 00 00 1C 00 00 00 00 00 00 00", PilotHex, UnfilledHex,
                    "00 00 00 00 00 00"}))},
        {"CreateGroup", CreateGroupMessage{MarkerGroup()}, // 48 + 48 + 4 + 4 = 104 bytes; its own size leaves 4 out
         Dump("68 00", "09",
              "00 00 00 00 07 91 3E 4C 00 00 00 00 1C 00 00 00 00 00 00 00 34 00 00 00 08 00 00 00 07 91 3E 4C"
              "04 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 00 00 00 03 91 3A 4C 30 00 00 00 0E 00 00 00"
              "00 00 00 00 47 00 00 00 02 91 3B 4C")},
        {"DeletePlayer", DeletePlayerMessage{JoinerPlayer, 0},
         Dump("30 00", "0B", "00 00 00 00 00 91 39 4C 00 00 00 00 00 00 00 00 00 00 00 00")},
        {"DeleteGroup", DeleteGroupMessage{0, TheGroup},
         Dump("30 00", "0C", "00 00 00 00 07 91 3E 4C 07 91 3E 4C 00 00 00 00 00 00 00 00")},
        {"AddPlayerToGroup", AddPlayerToGroupMessage{JoinerPlayer, TheGroup},
         Dump("30 00", "0D", "00 00 00 00 00 91 39 4C 07 91 3E 4C 00 00 00 00 00 00 00 00")},
        {"DeletePlayerFromGroup", DeletePlayerFromGroup{JoinerPlayer, TheGroup},
         Dump("30 00", "0E", "00 00 00 00 00 91 39 4C 07 91 3E 4C 00 00 00 00 00 00 00 00")},
        {"PlayerDataChanged", PlayerDataChanged{JoinerPlayer, {0xAA, 0xBB}},
         Dump("2E 00", "0F", "00 00 00 00 00 91 39 4C 02 00 00 00 18 00 00 00 AA BB")},
        {"GroupDataChanged", GroupDataChanged{TheGroup, {}},
         Dump("2C 00", "11", "00 00 00 00 07 91 3E 4C 00 00 00 00 18 00 00 00")},
        {"PlayerNameChanged", PlayerNameChanged{JoinerPlayer, u"Bo", u"P"},
         Dump("36 00", "10", "00 00 00 00 00 91 39 4C 18 00 00 00 1E 00 00 00 42 00 6F 00 00 00 50 00 00 00")},
        {"GroupNameChangedToFormalNameAlone", GroupNameChanged{TheGroup, u"", u"P"},
         Dump("30 00", "12", "00 00 00 00 07 91 3E 4C 00 00 00 00 18 00 00 00 50 00 00 00")},
        {"Packet", Packet{piece, 1, 3, 2, 5, {0x11, 0x22}},
         Dump("46 00", "15",
              Join({PieceGuid, "01 00 00 00 02 00 00 00 03 00 00 00 02 00 00 00 05 00 00 00 30 00 00 00 11 22"}))},
        {"Packet2Data", Packet2Data{piece, 0, 0, 1, 1, {0x7F}},
         Dump("45 00", "30",
              Join({PieceGuid, "00 00 00 00 01 00 00 00 00 00 00 00 01 00 00 00 01 00 00 00 30 00 00 00 7F"}))},
        {"Packet2Ack", Packet2Ack{piece, 7}, Dump("30 00", "31", Join({PieceGuid, "07 00 00 00"}))},
        {"Ping", Ping{JoinerSystem, 123456}, Dump("24 00", "16", "01 91 38 4C 40 E2 01 00")},
        {"PingReply", PingReply{HostSystem, 123456}, Dump("24 00", "17", "03 91 3A 4C 40 E2 01 00")},
        {"YouAreDead", YouAreDead{}, Dump("1C 00", "18", "")},
        {"PlayerWrapper", PlayerWrapper{{0x70, 0x6C, 0x61, 0x79, 1, 2, 3, 4}},
         Dump("24 00", "19", "70 6C 61 79 01 02 03 04")},
        {"SessionDescChanged", SessionDescChanged{Practice(), u"AB", u"c"},
         Dump("82 00", "1A",
              Join({"00 00 00 00 64 00 00 00 6A 00 00 00", PracticeHex, "41 00 42 00 00 00 63 00 00 00"}))},
        {"IAmNameServer", IAmNameServer{JoinerSystem, HostSystem, 7, Unfilled},
         Dump("4C 00", "35", Join({"01 91 38 4C 03 91 3A 4C 07 00 00 00 20 00 00 00", UnfilledHex}))},
    };
}

std::variant<Management, DropReason> DecodeWhole(ByteSpan packet)
{
    const auto prefix = DecodePrefix(packet);
    if (const auto* reason = std::get_if<DropReason>(&prefix))
        return *reason;
    return DecodeManagement(packet.subspan(PrefixSize));
}

class EveryMessage : public testing::TestWithParam<WireCase> {};

TEST_P(EveryMessage, IsWrittenAsItsDump)
{
    EXPECT_EQ(EncodeMessage(GetParam().Message, 2300), GetParam().Encoded);
}

TEST_P(EveryMessage, IsReadFromItsDump)
{
    EXPECT_TRUE(IsManagement(GetParam().Encoded));
    const auto decoded = DecodeWhole(GetParam().Encoded);
    ASSERT_TRUE(std::holds_alternative<Management>(decoded));
    EXPECT_EQ(std::get<Management>(decoded).Version, 14);
    EXPECT_TRUE(std::get<Management>(decoded).Body == GetParam().Message);
}

/// Cut anywhere and with a size that fits, a message is refused or reads as a smaller one, never beyond its end.
TEST_P(EveryMessage, CanBeCutAnywhere)
{
    for (std::size_t n = 0; n < GetParam().Encoded.size(); ++n) {
        Bytes cut(GetParam().Encoded.begin(), GetParam().Encoded.begin() + static_cast<std::ptrdiff_t>(n));
        EXPECT_EQ(std::get<DropReason>(DecodePrefix(cut)), DropReason::Truncated) << n;
        cut.shrink_to_fit();
        if (n > PrefixSize)
            (void)DecodeManagement(ByteSpan(cut).subspan(PrefixSize));
    }
}

TEST_P(EveryMessage, SurvivesAnyDamagedByte)
{
    for (std::size_t at = PrefixSize; at < GetParam().Encoded.size(); ++at) {
        for (const unsigned flip : {0x01U, 0x80U, 0xFFU}) {
            Bytes damaged = GetParam().Encoded;
            damaged[at] = static_cast<std::uint8_t>(damaged[at] ^ flip);
            (void)DecodeManagement(ByteSpan(damaged).subspan(PrefixSize));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Wire, EveryMessage, testing::ValuesIn(Cases()),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(PlayerMessages, HaveIdsAndPayloadBehindThePrefix)
{
    const Bytes joinRequest{1, 0x10, 0, 0, 0, 0, 0, 0};
    const Bytes dump = FromHex("24 00 B0 FA 02 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00 00 91 39 4C 02 91 3B 4C"
                               "01 10 00 00 00 00 00 00");
    EXPECT_EQ(EncodePlayerMessage(JoinerPlayer, HostPlayer, joinRequest, 2300), dump);
    EXPECT_FALSE(IsManagement(dump));
    const auto decoded = std::get<PlayerMessage>(DecodePlayerMessage(ByteSpan(dump).subspan(PrefixSize), true));
    EXPECT_EQ(decoded.From, JoinerPlayer);
    EXPECT_EQ(decoded.To, HostPlayer);
    EXPECT_THAT(decoded.Payload, testing::ElementsAreArray(joinRequest));
}

TEST(PlayerMessages, ThatReadAsASignatureAreWrapped)
{
    const Bytes content{9};
    EXPECT_EQ(EncodePlayerMessage(Signature, HostPlayer, content, 2300),
              Dump("25 00", "19", "70 6C 61 79 02 91 3B 4C 09"));
    // Without ids the payload itself may begin like that; seven bytes are too few to be taken for a message.
    const Bytes eight = FromHex("70 6C 61 79 00 00 00 00");
    EXPECT_TRUE(IsManagement(EncodePlayerMessage(0, 0, eight, 2300, false)));
    EXPECT_FALSE(IsManagement(EncodePlayerMessage(0, 0, ByteSpan(eight).first(7), 2300, false)));
}

TEST(PlayerMessages, AreUnwrappedWithAndWithoutASecondPrefix)
{
    const Bytes bare = FromHex("00 91 39 4C 02 91 3B 4C 09");
    const Bytes whole = EncodePlayerMessage(JoinerPlayer, HostPlayer, Bytes{9}, 2300);
    EXPECT_THAT(UnwrapPlayerMessage(bare), testing::ElementsAreArray(bare));
    EXPECT_THAT(UnwrapPlayerMessage(whole), testing::ElementsAreArray(bare));
}

struct BadPacket {
    const char* Name;
    std::string Hex;
    DropReason Reason;
};
class BadPackets : public testing::TestWithParam<BadPacket> {};

TEST_P(BadPackets, AreDroppedForTheirReason)
{
    const Bytes packet = FromHex(GetParam().Hex);
    const auto decoded = DecodeWhole(packet);
    ASSERT_TRUE(std::holds_alternative<DropReason>(decoded));
    EXPECT_EQ(std::get<DropReason>(decoded), GetParam().Reason);
}

const std::string Head = "02 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00 70 6C 61 79 ";
INSTANTIATE_TEST_SUITE_P(
    Wire, BadPackets,
    testing::Values(
        BadPacket{"Empty", "", DropReason::Truncated},
        BadPacket{"UnknownToken", "1C 00 B0 FB " + Head + "18 00 0E 00", DropReason::BadMagic},
        BadPacket{"NoInternetAddress",
                  "1C 00 B0 FA 17 00 08 FC 00 00 00 00 00 00 00 00 00 00 00 00 70 6C 61 79 18 00 0E 00",
                  DropReason::BadMagic},
        BadPacket{"SizeBelowPrefix", "13 00 B0 FA " + Head + "18 00 0E 00", DropReason::Truncated},
        BadPacket{"SizeAbovePacket", "1D 00 B0 FA " + Head + "18 00 0E 00", DropReason::Truncated},
        BadPacket{"SizeBelowPacket", "1B 00 B0 FA " + Head + "18 00 0E 00", DropReason::Oversized},
        BadPacket{"SizeAboveEveryMessage", "01 00 B4 FA " + Head + "18 00 0E 00", DropReason::Oversized},
        BadPacket{"OldVersion", "1C 00 B0 FA " + Head + "18 00 08 00", DropReason::WrongVersion},
        BadPacket{"UnknownCommand", "1C 00 B0 FA " + Head + "14 00 0E 00", DropReason::UnknownCommand},
        BadPacket{"MissingBody", "1C 00 B0 FA " + Head + "05 00 0E 00", DropReason::Truncated},
        BadPacket{"PieceBeyondItsMessage", // one byte at offset 1 of a message of one
                  "45 00 B0 FA " + Head +
                      "15 00 0E 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
                      "00 00 00 00 01 00 00 00 01 00 00 00 01 00 00 00 01 00 00 00 30 00 00 00 7F",
                  DropReason::Malformed},
        BadPacket{"NameWithoutEnd",
                  "2E 00 B0 FA " + Head + "10 00 0E 00 00 00 00 00 01 00 00 00 18 00 00 00 00 00 00 00 41 00",
                  DropReason::Malformed},
        BadPacket{"NameInsideTheFixedPart",
                  "2E 00 B0 FA " + Head + "10 00 0E 00 00 00 00 00 01 00 00 00 08 00 00 00 00 00 00 00 00 00",
                  DropReason::Malformed}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(Versions, AboveTheHighestCountAsTheHighest)
{
    Bytes ping = EncodeMessage(Ping{JoinerSystem, 0}, 2300);
    ping[26] = 99;
    EXPECT_EQ(std::get<Management>(DecodeWhole(ping)).Version, 14);
    ping[26] = 9;
    EXPECT_EQ(std::get<Management>(DecodeWhole(ping)).Version, 9);
}

TEST(LoginMessages, EndAJoinAndOthersAreKnownButUnused)
{
    EXPECT_TRUE(std::get<Management>(DecodeWhole(Dump("1C 00", "1E", ""))).Body ==
                WireMessage(LoginFailed{Command::LogonDenied}));
    EXPECT_TRUE(std::get<Management>(DecodeWhole(Dump("1C 00", "2D", ""))).Body ==
                WireMessage(IgnoredMessage{Command::Chat}));
}
} // namespace
} // namespace corvane::directplay
