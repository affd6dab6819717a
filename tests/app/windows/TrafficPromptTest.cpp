#include "app/windows/TrafficPrompts.h"
#include "core/windows/DeskSettings.h"
#include "tests/core/TemporaryFolder.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QTimer>
#include <gtest/gtest.h>

// The questions for a feed and for FlightGear's relay.

namespace corvane {
namespace {
class TrafficPromptTest : public testing::Test {
protected:
    /// Answers the next question, once it is open.
    static void Answer(const std::function<void(QDialog&)>& answer)
    {
        QTimer::singleShot(0, qApp, [answer] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            answer(*dialog);
        });
    }
    template <class Control> static Control& In(QDialog& dialog, const char* name)
    {
        return *dialog.findChild<Control*>(name);
    }

    const TemporaryFolder m_folder;
    DeskSettings m_desk{QString::fromStdString((m_folder.Path() / "desk.ini").string())};
};

TEST_F(TrafficPromptTest, AFeedIsAskedForUntilItCanBeReadAndOfferedAgain)
{
    Answer([](QDialog& dialog) {
        EXPECT_EQ(In<QLineEdit>(dialog, "Text1").text(), "127.0.0.1:30003");
        EXPECT_EQ(In<QSpinBox>(dialog, "Spin2").value(), 300);
        EXPECT_EQ(In<QSpinBox>(dialog, "Spin3").value(), 5000);
        EXPECT_FALSE(In<QLineEdit>(dialog, "Text2").isVisible()) << "a feed knows no callsign";
        In<QLineEdit>(dialog, "Text1").setText("host:99999");
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(In<QLabel>(dialog, "Label6").text().isEmpty()) << "what is wrong is told";
        In<QLineEdit>(dialog, "Text1").setText(" http://192.0.2.7/data/aircraft.json ");
        In<QSpinBox>(dialog, "Spin2").setValue(80);
        In<QSpinBox>(dialog, "Spin3").setValue(25);
        dialog.accept();
    });
    const auto wish = AskFeed(m_desk);
    ASSERT_TRUE(wish);
    EXPECT_EQ(wish->Place, (FeedPlace{FeedKind::JsonWeb, "192.0.2.7", 80, "/data/aircraft.json"}));
    EXPECT_EQ(wish->RadiusNm, 80);
    EXPECT_EQ(wish->Most, 25U);
    Answer([](QDialog& dialog) {
        EXPECT_EQ(In<QLineEdit>(dialog, "Text1").text(), "http://192.0.2.7/data/aircraft.json");
        EXPECT_EQ(In<QSpinBox>(dialog, "Spin2").value(), 80);
        dialog.reject();
    });
    EXPECT_FALSE(AskFeed(m_desk)) << "it was left";
}

TEST_F(TrafficPromptTest, ACallsignIsTheAreasUnlessTheUserHasOneOfHisOwn)
{
    AreaModel area;
    area.AreaName = "KSEA - Seattle Tacoma Intl";
    Answer([](QDialog& dialog) {
        EXPECT_EQ(In<QLineEdit>(dialog, "Text2").text(), "KSEA_TW");
        EXPECT_EQ(In<QSpinBox>(dialog, "Spin1").value(), 0) << "any port that is free";
        In<QSpinBox>(dialog, "Spin1").setValue(5001);
        dialog.accept();
    });
    const auto wish = AskFlightGear(m_desk, area);
    ASSERT_TRUE(wish);
    EXPECT_EQ(wish->Link.PartnerHost, "mpserver01.flightgear.org");
    EXPECT_EQ(wish->Link.PartnerPort, 5000);
    EXPECT_EQ(wish->Link.ListenPort, 5001);
    EXPECT_EQ(wish->Link.Station.Callsign, "KSEA_TW");
    area.AreaName = "LSZH - Zurich";
    Answer([](QDialog& dialog) {
        EXPECT_EQ(In<QLineEdit>(dialog, "Text2").text(), "LSZH_TW");
        In<QLineEdit>(dialog, "Text2").setText("obs1");
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible()) << "nobody would hear an observer";
        In<QLineEdit>(dialog, "Text2").setText("ANNA");
        dialog.accept();
    });
    EXPECT_EQ(AskFlightGear(m_desk, area)->Link.Station.Callsign, "ANNA");
    Answer([](QDialog& dialog) {
        EXPECT_EQ(In<QLineEdit>(dialog, "Text2").text(), "ANNA");
        dialog.reject();
    });
    EXPECT_FALSE(AskFlightGear(m_desk, area));
}
} // namespace
} // namespace corvane
