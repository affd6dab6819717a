#include "recording/SessionRecorder.h"

#include "recording/RecordingPeer.h"
#include "recording/RecordingReader.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/recording/SampleRecording.h"
#include "tests/session/SessionFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace corvane {
namespace {
using test::Joined;
using test::Left;
using test::RecordsOf;
using test::Renamed;
using test::Said;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr AnnounceMessage PilotAnnounce{MessageType::PilotAnnounce, 1};

/// A host, a pilot, and a controller whose peer is recorded. Ids count from 1 in this order.
class SessionRecorders : public testing::Test {
protected:
    SessionRecorders()
    {
        Host.Host("Traffic", 8, SessionKeepAlive | SessionPasswordRequired, "secret");
        JoinPilot(Pilot, "N1");
        Own = *Factory.DirectPlayCreate();
        EXPECT_TRUE(Own->InitializeConnection(InMemoryProvider::ConnectionAddress));
        SessionEntry entry = Host.Sessions().front();
        entry.Password = "secret";
        EXPECT_TRUE(Own->Open(entry, OpenJoin));
        OwnId = *Own->CreatePlayer("**ATC", "Player");
    }
    void JoinPilot(Member& pilot, std::string_view name) const
    {
        SessionEntry entry = Host.Sessions().front();
        entry.Password = "secret";
        ASSERT_TRUE(pilot.Peer->Open(entry, OpenJoin));
        pilot.Id = *pilot.Peer->CreatePlayer(name, "Player");
    }
    void Start()
    {
        const auto started = Recorder.Start(File);
        ASSERT_TRUE(started) << started.error().Text();
    }
    /// What the program's timer does.
    void Tick()
    {
        const auto count = Own->GetMessageCount(OwnId);
        ASSERT_TRUE(count);
        for (std::int32_t i = 0; i < *count; ++i)
            ASSERT_TRUE(Own->Receive());
    }
    [[nodiscard]] std::vector<test::SampleRecord> Recorded() const { return RecordsOf(*ReadRecording(File)); }
    [[nodiscard]] std::vector<test::SampleRecord> RecordedSince(std::size_t count) const
    {
        auto records = Recorded();
        records.erase(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(count));
        return records;
    }

    const TemporaryFolder Folder;
    const std::filesystem::path File = Folder.Path() / "session.cvr";
    std::int64_t Now = 1000;
    SessionRecorder Recorder{[this] { return Now; }};
    InMemoryNetwork Network;
    InMemoryProvider Provider{Network};
    RecordingPeerFactory Factory{Provider, Recorder};
    Member Host{Network};
    Member Pilot{Network};
    std::unique_ptr<SessionPeer> Own;
    PlayerId OwnId = 0;
};

TEST_F(SessionRecorders, BeginWithWhatIsKnownOfEveryMember)
{
    const PositionMessage old{.Type = MessageType::PositionFull, .Latitude = 1};
    const PositionMessage position{.Type = MessageType::PositionShort, .Latitude = 2};
    const AircraftInfoMessage aircraft{"Jet Plane", "Learjet"};
    Pilot.Send(AllPlayers, position);
    Pilot.Send(AllPlayers, old);
    Pilot.Send(AllPlayers, aircraft);
    Pilot.Send(AllPlayers, ChatTextMessage{"not kept"});
    Pilot.Send(AllPlayers, position);
    Pilot.Send(AllPlayers, PilotAnnounce);
    Host.SendBytes(AllPlayers, {1, 2, 3});
    Tick();
    Now += 500;
    Start();
    EXPECT_THAT(Recorded(), ElementsAre(Joined(0, 1, "Host"), Joined(0, 2, "N1"), Joined(0, 3, "**ATC"),
                                        Said(0, 2, PilotAnnounce), Said(0, 2, aircraft), Said(0, 2, position)));
    const auto recording = ReadRecording(File);
    EXPECT_EQ(recording->Head, (RecordingHead{.SessionName = "Traffic",
                                              .MaxPlayers = 8,
                                              .Flags = SessionKeepAlive,
                                              .InstanceGuid = Host.Guid,
                                              .OwnPlayerId = 3,
                                              .OwnName = "**ATC"}));
    const ByteSpan content = recording->Content.Span();
    EXPECT_EQ(std::string(content.begin(), content.end()).find("secret"), std::string::npos);
}

TEST_F(SessionRecorders, WriteWhatTheSessionDelivers)
{
    Start();
    Now += 10;
    Pilot.Send(AllPlayers, ChatTextMessage{"hello"});
    Pilot.Send(AllPlayers, PlainMessage{MessageType::RemovedByHost});
    Tick();
    Now += 10;
    for (const Message& message : {Message(ChatTextMessage{"hi"}), Message(PlainMessage{MessageType::IdentifyRequest})})
        ASSERT_TRUE(Own->Send(OwnId, AllPlayers, SendGuaranteed, EncodeMessage(message)));
    EXPECT_THAT(RecordedSince(3),
                ElementsAre(Said(10, 2, ChatTextMessage{"hello"}),
                            Said(10, 2, PlainMessage{MessageType::RemovedByHost}), Said(20, 3, ChatTextMessage{"hi"})));
}

TEST_F(SessionRecorders, FollowWhoComesAndGoes)
{
    Start();
    Member late(Network);
    JoinPilot(late, "N2");
    Now += 999; // members are looked up once a second
    Tick();
    EXPECT_EQ(Recorded().size(), 3U);
    Now += 1;
    Tick();
    ASSERT_TRUE(Pilot.Peer->SetPlayerName(Pilot.Id, "N1 heavy"));
    Now += 5;
    EXPECT_EQ(*Own->GetPlayerFriendlyName(Pilot.Id), "N1 heavy"); // the program asked
    ASSERT_TRUE(late.Peer->Close());
    Now += 995;
    Tick();
    Now += 7;
    ASSERT_TRUE(Own->GetDPEnumPlayers()); // nothing new
    EXPECT_THAT(RecordedSince(3), ElementsAre(Joined(1000, 4, "N2"), Renamed(1005, 2, "N1 heavy"), Left(2000, 4)));
}

TEST_F(SessionRecorders, KnowASenderBeforeItsFirstMessage)
{
    Start();
    Member late(Network);
    JoinPilot(late, "N2");
    late.Send(AllPlayers, PilotAnnounce);
    Member brief(Network);
    JoinPilot(brief, "N3");
    brief.Send(AllPlayers, PilotAnnounce);
    ASSERT_TRUE(brief.Peer->Close()); // gone before anybody looked
    Now += 3;
    Tick();
    EXPECT_THAT(RecordedSince(3), ElementsAre(Joined(3, 4, "N2"), Said(3, 4, PilotAnnounce), Joined(3, 5, "N3"),
                                              Said(3, 5, PilotAnnounce)));
}

TEST_F(SessionRecorders, StopWhenTheSessionIsLeft)
{
    EXPECT_TRUE(Recorder.CanRecord());
    Start();
    EXPECT_TRUE(Recorder.IsRecording());
    EXPECT_EQ(Recorder.File(), File);
    ASSERT_TRUE(Own->Close());
    EXPECT_FALSE(Recorder.IsRecording());
    EXPECT_FALSE(Recorder.CanRecord());
    EXPECT_FALSE(Recorder.TakeFailure()) << "that is how a recording ends";
    const auto again = Recorder.Start(Folder.Path() / "again.cvr");
    ASSERT_FALSE(again);
    EXPECT_THAT(again.error().Text(), HasSubstr("again.cvr: there is no session to record"));
    EXPECT_FALSE(FileExists(Folder.Path() / "again.cvr"));
}

/// Lets no file grow beyond a size, as a full disk does.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_before = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit small{bytes, m_limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_before);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_limit{};
    void (*m_before)(int) = SIG_DFL;
};

TEST_F(SessionRecorders, StopOnAFullDiskAndLetTheSessionGoOn)
{
    Start();
    const std::size_t known = Recorded().size();
    {
        const FileSizeLimit full(std::filesystem::file_size(File) + 60);
        for (int i = 0; i < 4; ++i)
            Pilot.Send(OwnId, ChatTextMessage{"hello"});
        Tick();
    }
    EXPECT_FALSE(Recorder.IsRecording());
    const auto failure = Recorder.TakeFailure();
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->What, File.string());
    EXPECT_THAT(failure->Why, testing::StartsWith("the recording has stopped: "));
    EXPECT_FALSE(Recorder.TakeFailure()) << "told once";
    Pilot.Send(OwnId, ChatTextMessage{"hello"});
    Tick();
    // A line takes 13 + 8 + 15 + 4 = 40 bytes: one fits, and a part of the second.
    EXPECT_THAT(RecordedSince(known), ElementsAre(Said(0, 2, ChatTextMessage{"hello"})));
    EXPECT_TRUE(ReadRecording(File)->LeftOut);
    Start();
    EXPECT_EQ(Recorded().size(), known) << "once there is room, another begins";
}
} // namespace
} // namespace corvane
