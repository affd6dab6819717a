#include "tests/app/windows/ProgramFixture.h"
#include "tests/session/Member.h"

// Joining a session that somebody else hosts: what the person reads when it does not succeed.

namespace corvane {
namespace {
constexpr const char* FailedToJoin = "Failed to join game. Try to locate session again.";

/// The connection window over KSEA, with another member's session beside the practice session.
class JoinTest : public ProgramTest {
protected:
    void SetUp() override
    {
        ProgramTest::SetUp();
        m_window = StartInConnection();
    }
    void ExpectBackAtTheStart(const char* message)
    {
        EXPECT_EQ(m_shown.Last(), message);
        EXPECT_EQ(m_shown.Icons.back(), MessageIcon::Warning);
        EXPECT_EQ(Status(), "Disconnected");
        EXPECT_EQ(In<QListWidget>(m_window, "List2").count(), 0);
        EXPECT_TRUE(In<QListWidget>(m_window, "List1").isEnabled());
        EXPECT_TRUE(In<QPushButton>(m_window, "Command1").isEnabled());
        for (const char* timer : {"Timer1", "Timer2"})
            EXPECT_FALSE(In<QTimer>(m_window, timer).isActive()) << timer;
        EXPECT_FALSE(m_state.Session.RadarOpen);
    }
    std::string Status() { return In<QLabel>(m_window, "Label5").text().toStdString(); }

    QWidget* m_window = nullptr;
};

TEST_F(JoinTest, WithoutSessionAndNicknameBothAreAskedFor)
{
    In<QLineEdit>(m_window, "Text1").clear();
    Click(m_window, "Command2");
    EXPECT_THAT(m_shown.Texts,
                testing::ElementsAre("Please select a FS multiplayer session.", "Please write a nickname."));
    EXPECT_EQ(Status(), "Disconnected");
    Click(m_window, "Command1");
    EXPECT_EQ(m_shown.Last(), "Please select one type of connection.");
    In<QListWidget>(m_window, "List1").setFocus(); // the keyboard comes to the list: nothing is chosen yet
    Click(m_window, "Command1");
    EXPECT_EQ(m_shown.Last(), "Please select one type of connection.");
    EXPECT_EQ(m_shown.Icons.back(), MessageIcon::Information);
}

TEST_F(JoinTest, AClickOnTheSelectedConnectionTypeStartsAgain)
{
    ASSERT_TRUE(Locate(m_window, "Practice"));
    auto& types = In<QListWidget>(m_window, "List1");
    const QPoint selected = types.visualItemRect(types.currentItem()).center();
    QTest::mouseClick(types.viewport(), Qt::LeftButton, {}, selected);
    EXPECT_EQ(Status(), "Disconnected");
    EXPECT_EQ(In<QListWidget>(m_window, "List2").count(), 0);
    QTest::mouseDClick(types.viewport(), Qt::LeftButton, {}, selected);
    EXPECT_EQ(Status(), "Done") << "a double click locates, and its last half does not start again";
}

TEST_F(JoinTest, AWrongPasswordFails)
{
    Member host(m_network);
    host.Host("Guarded", 8, SessionKeepAlive + SessionPasswordRequired, "tower");
    ASSERT_TRUE(Locate(m_window, "Guarded"));
    Click(m_window, "Command2");
    EXPECT_EQ(m_shown.Last(), "This session requires a password. Enter the password.");
    EXPECT_EQ(Status(), "Done") << "cancelled: the sessions stay";
    m_shown.TextAnswer = "ground";
    Click(m_window, "Command2");
    ExpectBackAtTheStart(FailedToJoin);
}

TEST_F(JoinTest, ASessionThatHasFilledUpFails)
{
    Member host(m_network);
    host.Host("Small", 2);
    ASSERT_TRUE(Locate(m_window, "Small (1/2)"));
    Member quicker(m_network);
    quicker.Join(host.Guid, "Quicker");
    Click(m_window, "Command2");
    ExpectBackAtTheStart(FailedToJoin);
}

TEST_F(JoinTest, ASessionWhoseHostHasGoneFails)
{
    {
        Member host(m_network);
        host.Host("Passing", 8, SessionKeepAlive);
        ASSERT_TRUE(Locate(m_window, "Passing"));
    }
    Click(m_window, "Command2");
    ExpectBackAtTheStart(FailedToJoin);
}

TEST_F(JoinTest, AHostThatGoesWhileItIsAwaitedFailsAtTheNextRetry)
{
    auto host = std::make_unique<Member>(m_network);
    host->Host("Silent", 8, SessionKeepAlive);
    ASSERT_TRUE(Locate(m_window, "Silent"));
    Click(m_window, "Command2");
    EXPECT_EQ(Status(), "Connecting...");
    EXPECT_EQ(In<QTimer>(m_window, "Timer1").interval(), 1);
    EXPECT_EQ(In<QTimer>(m_window, "Timer2").interval(), 30000);
    Fire(m_window, "Timer2");
    EXPECT_THAT(host->Received(), testing::ElementsAre("JoinRequest", "JoinRetry", "JoinRequest"));
    host.reset();
    Fire(m_window, "Timer2");
    ExpectBackAtTheStart(FailedToJoin);
}

TEST_F(JoinTest, AHostMayRefuse)
{
    Member host(m_network);
    host.Host("Closed");
    ASSERT_TRUE(Locate(m_window, "Closed"));
    Click(m_window, "Command2");
    host.Send(m_state.Session.OwnPlayerId, PlainMessage{MessageType::JoinRefused});
    ASSERT_TRUE(WaitUntil([&] { return !In<QTimer>(m_window, "Timer1").isActive(); }));
    ExpectBackAtTheStart("Connection refused.");
    EXPECT_EQ(m_window, Find("Form2")) << "the window waits for another choice";
}
} // namespace
} // namespace corvane
