#include "recording/Crc32.h"
#include "recording/RecordingReader.h"
#include "recording/RecordingWriter.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/recording/SampleRecording.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace corvane {
namespace {
using test::ContentOf;
using test::FileOf;
using test::RecordsOf;
using test::SampleHead;
using test::SampleRecord;
using testing::HasSubstr;

Bytes FromHex(std::string_view hex)
{
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 3)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
    return bytes;
}

RecordView ViewOf(const SampleRecord& record)
{
    return {record.TimeMs, record.Kind, record.Member, record.Payload};
}

TEST(RecordingFile, HasTheLayoutOfTheDocumentation)
{
    const Bytes check = FromHex("31 32 33 34 35 36 37 38 39");
    EXPECT_EQ(Crc32(check), 0xCBF43926U) << "the checksum's own check value";
    // The checksums were worked out by another implementation.
    const Bytes expected =
        FromHex("43 4F 52 56 52 45 43 1A 01 00 1F 00 07 00 54 72 61 66 66 69 63 08 00 00 00 44 00 00 00 03 00 7B 31 7D "
                "05 00 00 00 03 00 2A 2A 41 6D A0 FC 14 "
                "00 00 00 00 01 07 00 00 00 02 00 00 00 4E 31 E4 04 6D 86 "
                "DC 05 00 00 03 FE FF FF FF 00 00 00 00 C2 86 77 CB ");
    EXPECT_EQ(FileOf({test::Joined(0, 7, "N1"), test::Left(1500, -2)}), expected);
}

TEST(RecordingFile, ComesBackAsItWasWritten)
{
    const TemporaryFolder folder;
    const auto path = folder.Path() / "session.cvr";
    const auto records = test::SampleRecords();
    {
        auto writer = RecordingWriter::Create(path, SampleHead());
        ASSERT_TRUE(writer) << writer.error().Text();
        for (const SampleRecord& record : records) {
            ASSERT_TRUE(writer->Write(ViewOf(record)));
            const auto soFar = ReadRecording(path); // as after a crash: nothing has been closed
            ASSERT_TRUE(soFar);
            EXPECT_EQ(RecordsOf(*soFar).back(), record);
        }
    }
    const auto recording = ReadRecording(path);
    ASSERT_TRUE(recording) << recording.error().Text();
    EXPECT_EQ(recording->Head, SampleHead());
    EXPECT_EQ(RecordsOf(*recording), records);
    EXPECT_EQ(recording->LengthMs(), 4000000000U);
    EXPECT_FALSE(recording->LeftOut);
}

/// Reads what is left of a file and expects nothing but whole records of it, in order, or a refusal that names it.
void ExpectPrefixOrRefusal(const Bytes& damaged, const std::vector<SampleRecord>& whole, const std::string& what)
{
    const auto recording = DecodeRecording(ContentOf(damaged), "/some/damaged.cvr");
    if (!recording) {
        EXPECT_EQ(recording.error().What, "/some/damaged.cvr") << what;
        return;
    }
    const auto records = RecordsOf(*recording);
    ASSERT_LE(records.size(), whole.size()) << what;
    EXPECT_TRUE(std::equal(records.begin(), records.end(), whole.begin())) << what;
    EXPECT_EQ(recording->LeftOut.has_value(), records.size() < whole.size()) << what;
}

TEST(RecordingFile, ReadsUpToTheLastWholeRecordWhereverItIsCut)
{
    const auto records = test::SampleRecords();
    const Bytes file = FileOf(records);
    std::vector<std::size_t> ends{FileOf({}).size()}; // of the head, and of each record
    for (std::size_t n = 1; n <= records.size(); ++n)
        ends.push_back(FileOf({records.begin(), records.begin() + static_cast<std::ptrdiff_t>(n)}).size());
    for (std::size_t size = 0; size <= file.size(); ++size) {
        const auto recording = DecodeRecording(ContentOf(ByteSpan(file).first(size)), "cut.cvr");
        ASSERT_EQ(recording.has_value(), size >= ends.front()) << size;
        if (!recording) {
            EXPECT_EQ(recording.error().What, "cut.cvr");
            continue;
        }
        const auto whole = std::upper_bound(ends.begin(), ends.end(), size) - ends.begin() - 1;
        EXPECT_EQ(RecordsOf(*recording), std::vector(records.begin(), records.begin() + whole)) << size;
        EXPECT_EQ(recording->LeftOut.has_value(), ends[static_cast<std::size_t>(whole)] != size) << size;
    }
}

TEST(RecordingFile, NoticesEveryFlippedBit)
{
    const auto records = test::SampleRecords();
    const Bytes file = FileOf(records);
    for (std::size_t at = 0; at < file.size(); ++at) {
        for (int bit = 0; bit < 8; ++bit) {
            Bytes damaged = file;
            damaged[at] = static_cast<std::uint8_t>(damaged[at] ^ (1U << bit));
            ExpectPrefixOrRefusal(damaged, records, std::to_string(at) + "." + std::to_string(bit));
            EXPECT_TRUE(at >= FileOf({}).size() || !DecodeRecording(ContentOf(damaged), "x")) << "head, byte " << at;
        }
    }
}

struct BadFile {
    const char* Name;
    std::function<Bytes()> Make;
    const char* Why;
};

Bytes WithHead(const std::function<void(RecordingHead&)>& change)
{
    RecordingHead head = SampleHead();
    change(head);
    return EncodeRecordingHead(head);
}

Bytes WithHeadByte(std::size_t at, std::uint8_t value)
{
    const Bytes whole = EncodeRecordingHead(SampleHead());
    Bytes head(whole.begin(), whole.end() - RecordChecksumSize);
    head[at] = value;
    const std::uint32_t checksum = Crc32(head);
    ByteWriter(head).WriteU32(checksum);
    return head;
}

Bytes WithRecord(const SampleRecord& record)
{
    return FileOf({test::Joined(100, 5, "**A"), record});
}

class BadRecording : public testing::TestWithParam<BadFile> {};
TEST_P(BadRecording, IsRefusedWithItsNameAndTheReason)
{
    const auto recording = DecodeRecording(ContentOf(GetParam().Make()), "/some/bad.cvr");
    ASSERT_FALSE(recording);
    EXPECT_EQ(recording.error().What, "/some/bad.cvr");
    EXPECT_THAT(recording.error().Why, HasSubstr(GetParam().Why));
}
INSTANTIATE_TEST_SUITE_P(
    Files, BadRecording,
    testing::Values(
        BadFile{"Empty", [] { return Bytes(); }, "is not a recorded session"},
        BadFile{"AnotherMagic", [] { return WithHeadByte(7, '\n'); }, "is not a recorded session"},
        BadFile{"NextVersion", [] { return WithHeadByte(8, 2); }, "is of version 2, not 1"},
        BadFile{"NextVersionWithAHeadOfItsOwn", [] { return FromHex("43 4F 52 56 52 45 43 1A 02 00 "); }, "version 2"},
        BadFile{"TextBeyondTheDescription", [] { return WithHeadByte(12, 200); }, "description ends after 31 bytes"},
        BadFile{"DescriptionBeyondTheFile", [] { return WithHeadByte(11, 200); }, "ends inside its head"},
        BadFile{"NoGuid", [] { return WithHead([](RecordingHead& head) { head.InstanceGuid = ""; }); }, "no session"},
        BadFile{"NegativeLimit", [] { return WithHead([](RecordingHead& head) { head.MaxPlayers = -1; }); },
                "no session"},
        BadFile{"KindBelowTheFirst",
                [] {
                    return WithRecord({100, RecordKind{0}, 5, {}});
                },
                "is of kind 0"},
        BadFile{"KindAboveTheLast",
                [] {
                    return WithRecord({100, RecordKind{5}, 5, {}});
                },
                "is of kind 5"},
        BadFile{"TimeGoingBack", [] { return WithRecord(test::Left(99, 5)); }, "goes back in time to 99 ms"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(RecordingFile, NeverTrustsALength)
{
    // The largest that a record may have, one more, and what would wrap around.
    for (const std::uint32_t length : {65536U, 65537U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        Bytes file = FileOf({test::Joined(0, 5, "**A")});
        const std::size_t start = file.size();
        ByteWriter writer(file);
        writer.WriteU32(0);
        writer.WriteU8(static_cast<std::uint8_t>(RecordKind::MemberSpoke));
        writer.WriteI32(5);
        writer.WriteU32(length);
        writer.WriteZeros(65537);
        writer.WriteU32(Crc32(ByteSpan(file).subspan(start)));
        const auto recording = DecodeRecording(ContentOf(file), "long.cvr");
        ASSERT_TRUE(recording) << length;
        EXPECT_EQ(recording->Records.size(), 1U) << length;
        ASSERT_TRUE(recording->LeftOut) << length;
        EXPECT_THAT(recording->LeftOut->Text(),
                    HasSubstr("long.cvr: the record at byte " + std::to_string(start) + " is not whole"));
    }
    Bytes file = FileOf({test::Joined(0, 5, "**A")});
    test::Append(file, {1, RecordKind::MemberSpoke, 5, Bytes(MaxRecordPayload)});
    EXPECT_EQ(DecodeRecording(ContentOf(file), "x")->Records.size(), 2U) << "the largest record there is";
}

TEST(RecordingFile, KeepsLongTextsShort)
{
    RecordingHead head = SampleHead();
    head.SessionName.assign(70000, 's');
    head.OwnName.assign(70000, 'o');
    const auto recording = DecodeRecording(ContentOf(EncodeRecordingHead(head)), "x");
    ASSERT_TRUE(recording) << recording.error().Text();
    EXPECT_EQ(recording->Head.SessionName, std::string(MaxRecordingText, 's'));
    EXPECT_EQ(recording->Head.OwnName, std::string(MaxRecordingText, 'o'));
    EXPECT_EQ(recording->Head.OwnPlayerId, 5);
}

TEST(RecordingFile, SaysWhichFileCannotBeReadOrWritten)
{
    const TemporaryFolder folder;
    const auto missing = folder.Path() / "no" / "session.cvr";
    EXPECT_THAT(ReadRecording(missing).error().Text(), HasSubstr(missing.string()));
    EXPECT_THAT(ReadRecording(folder.Path()).error().Text(), HasSubstr("is not a file"));
    EXPECT_THAT(RecordingWriter::Create(missing, SampleHead()).error().Text(), HasSubstr(missing.string()));
    const auto full = RecordingWriter::Create("/dev/full", SampleHead());
    ASSERT_FALSE(full);
    EXPECT_EQ(full.error().What, "/dev/full");
    EXPECT_TRUE(FileExists("/dev/full")) << "a device is not deleted";
    const auto huge = folder.Write("huge.cvr", FileOf({}));
    std::filesystem::resize_file(huge, MaxRecordingSize + 1);
    EXPECT_THAT(ReadRecording(huge).error().Text(), HasSubstr("huge.cvr: is larger than any recording"));
}
} // namespace
} // namespace corvane
