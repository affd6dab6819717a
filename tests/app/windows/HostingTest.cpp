#include "tests/app/windows/ProgramFixture.h"
#include "tests/net/LoopbackAddress.h"

#include <QCheckBox>
#include <QComboBox>

// The practice session on the network: hosted from the connection window, and joined from another machine.

namespace corvane {
namespace {
using test::LoopbackAddress;

DirectPlayOptions OtherMachine()
{
    DirectPlayOptions options;
    options.BindAddress = LoopbackAddress(2);
    options.HostAddress = LoopbackAddress(1);
    options.Timers.Enumeration = directplay::Millis{400};
    return options;
}

class HostingTest : public ProgramTest {
protected:
    void SetUp() override
    {
        ProgramTest::SetUp();
        PracticeScenario scenario{.Name = "One", .Aircraft = {ScenarioAircraft{}}};
        m_practice.SetScenarios({scenario, scenario});
        m_window = StartInConnection();
        In<QListWidget>(m_window, "List1").setCurrentRow(0);
    }
    QCheckBox& Option() { return In<QCheckBox>(m_window, "Check1"); }
    QLineEdit& AddressBox() { return In<QLineEdit>(m_window, "Text2"); }

    QWidget* m_window = nullptr;
};

TEST_F(HostingTest, IsOfferedForThePracticeSessionAloneAndIsOffAtFirst)
{
    EXPECT_TRUE(Option().isEnabled());
    EXPECT_FALSE(Option().isChecked());
    EXPECT_EQ(AddressBox().text(), "127.0.0.1");
    In<QListWidget>(m_window, "List1").setCurrentRow(1);
    EXPECT_FALSE(Option().isEnabled());
    EXPECT_FALSE(AddressBox().isEnabled());
    EXPECT_TRUE(m_practice.ServedAt().empty());
}

TEST_F(HostingTest, OffersScenariosForThePracticeSessionAlone)
{
    auto& choice = In<QComboBox>(m_window, "Combo1");
    EXPECT_TRUE(choice.isEnabled());
    ASSERT_EQ(choice.count(), 3);
    EXPECT_EQ(choice.currentText(), "Pilots come and go");
    In<QPushButton>(m_window, "Command1").click();
    EXPECT_EQ(In<QListWidget>(m_window, "List2").count(), 1);
    QTest::keyClick(&choice, Qt::Key_End); // a pick ends the located session, so another must be located
    EXPECT_EQ(m_practice.Playing(), 1U);
    EXPECT_EQ(In<QListWidget>(m_window, "List2").count(), 0);
    In<QPushButton>(m_window, "Command1").click();
    EXPECT_EQ(In<QListWidget>(m_window, "List2").count(), 1);
    QTest::keyClick(&choice, Qt::Key_Home);
    EXPECT_FALSE(m_practice.Playing());
    In<QListWidget>(m_window, "List1").setCurrentRow(1);
    EXPECT_FALSE(choice.isEnabled());
    EXPECT_TRUE(m_shown.Texts.empty()) << m_shown.Last();
}

TEST_F(HostingTest, LetsAnotherMachineIntoTheSessionThatTheControllerJoins)
{
    AddressBox().setText(QString::fromStdString(LoopbackAddress(1)));
    Option().click();
    ASSERT_TRUE(m_shown.Texts.empty()) << m_shown.Last();
    EXPECT_EQ(m_practice.ServedAt(), LoopbackAddress(1));
    AddressBox().selectAll(); // which can be changed while it is so
    QTest::keyClicks(&AddressBox(), QString::fromStdString(LoopbackAddress(2)));
    QTest::keyClick(&AddressBox(), Qt::Key_Return);
    EXPECT_EQ(m_practice.ServedAt(), LoopbackAddress(2));
    AddressBox().selectAll();
    QTest::keyClicks(&AddressBox(), QString::fromStdString(LoopbackAddress(1)));
    QTest::keyClick(&AddressBox(), Qt::Key_Return);
    EXPECT_EQ(m_practice.ServedAt(), LoopbackAddress(1));

    DirectPlayPeer visitor(OtherMachine());
    ASSERT_TRUE(visitor.InitializeConnection(DirectPlayConnectionAddress));
    const auto sessions = visitor.GetDPEnumSessions(0, EnumSessionsAvailable);
    ASSERT_TRUE(sessions && sessions->size() == 1);
    ASSERT_TRUE(visitor.Open(sessions->front(), OpenJoin));
    ASSERT_TRUE(visitor.CreatePlayer("Visitor", "Player"));

    ASSERT_TRUE(Locate(m_window, "Practice"));
    Click(m_window, "Command2");
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_state.Session.RadarOpen; }, 5000));
    const auto members = m_state.Session.SessionPeer->GetDPEnumPlayers();
    ASSERT_TRUE(members);
    EXPECT_THAT(*members, testing::Contains(testing::Field(&SessionMember::ShortName, "Visitor")));
    ASSERT_TRUE(QTest::qWaitFor([this] { return m_state.Players.PlayerCount() > 3; }, 5000));
}

TEST_F(HostingTest, StaysInMemoryWhereTheAddressIsNotThisMachines)
{
    for (const char* address : {"192.0.2.1", "nowhere"}) {
        AddressBox().setText(address);
        Option().click();
        EXPECT_NE(m_shown.Last().find(address), std::string::npos) << m_shown.Last();
        EXPECT_FALSE(Option().isChecked());
        EXPECT_TRUE(AddressBox().isEnabled());
    }
    EXPECT_TRUE(Locate(m_window, "Practice")); // in memory
}

TEST_F(HostingTest, ComesBackIntoMemoryWhenSwitchedOff)
{
    AddressBox().setText(QString::fromStdString(LoopbackAddress(1)));
    Option().click();
    Option().click();
    EXPECT_TRUE(m_practice.ServedAt().empty());
    DirectPlayPeer visitor(OtherMachine());
    ASSERT_TRUE(visitor.InitializeConnection(DirectPlayConnectionAddress));
    const auto sessions = visitor.GetDPEnumSessions(0, EnumSessionsAvailable);
    EXPECT_TRUE(sessions && sessions->empty());
    EXPECT_TRUE(Locate(m_window, "Practice"));
}
} // namespace
} // namespace corvane
