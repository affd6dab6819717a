#include "app/windows/AppearanceMemory.h"
#include "app/windows/AttentionControls.h"
#include "app/windows/VoiceControls.h"
#include "app/windows/VoiceSpeaker.h"
#include "core/windows/DeskSettings.h"
#include "tests/app/windows/ProgramFixture.h"

#include <QFontComboBox>
#include <QSpinBox>

namespace corvane {
namespace {
class AppearanceTest : public ProgramTest {};

TEST_F(AppearanceTest, ShowsAtOnceIsRememberedAndGoesBack)
{
    const QFont desktop = QApplication::font();
    QWidget* const radar = StartInRadar();
    In<QTimer>(radar, "Timer1").stop(); // the practice pilots stand still
    In<QTimer>(radar, "Timer2").stop();
    const QImage before = Picture(radar);
    Choose(radar, "appearance_op1");
    QWidget* const window = WaitFor("AppearanceForm");
    In<QComboBox>(window, "Colours").setCurrentIndex(static_cast<int>(ColourScheme::Safe));
    const QImage safe = Picture(radar);
    EXPECT_NE(safe, before);
    In<QSpinBox>(window, "LineWidth").setValue(3);
    In<QSpinBox>(window, "ScopeTextPx").setValue(20);
    EXPECT_NE(Picture(radar), safe);
    In<QCheckBox>(window, "OwnWindowFont").setChecked(true);
    In<QSpinBox>(window, "WindowTextPt").setValue(17);
    EXPECT_EQ(QApplication::font().pointSize(), 17);
    In<QComboBox>(window, "InterfacePercent").setCurrentIndex(2);

    const Appearance kept = ReadAppearance(DeskSettings(DeskFile())); // as the next start does
    EXPECT_EQ(kept.Colours, ColourScheme::Safe);
    EXPECT_EQ(kept.LineWidth, 3);
    EXPECT_EQ(kept.ScopeTextPx, 20);
    EXPECT_EQ(kept.WindowTextPt, 17);
    EXPECT_EQ(kept.InterfacePercent, 150);

    Click(window, "AsBefore");
    EXPECT_EQ(Picture(radar), before);
    EXPECT_EQ(QApplication::font().family(), desktop.family());
    EXPECT_EQ(QApplication::font().pointSize(), desktop.pointSize());
    EXPECT_EQ(ReadAppearance(DeskSettings(DeskFile())), Appearance());
    Click(window, "CloseButton");
    EXPECT_TRUE(WaitUntilGone("AppearanceForm"));
}

TEST_F(AppearanceTest, ADamagedMemoryIsHeldToWhatThereIs)
{
    DeskSettings desk({});
    desk.Keep("appearance/colours", 1e9);
    desk.Keep("appearance/lineWidth", "thick");
    desk.Keep("appearance/scopeTextPx", -5);
    desk.Keep("appearance/interfacePercent", 1e300);
    const Appearance look = ReadAppearance(desk);
    EXPECT_EQ(look.Colours, ColourScheme::Classic);
    EXPECT_EQ(look.LineWidth, 1);
    EXPECT_EQ(look.ScopeTextPx, ScopeTextSizes.Lowest);
    EXPECT_EQ(look.InterfacePercent, InterfaceScales.Highest);
}

TEST_F(AppearanceTest, SignalsFlashWhenTheyAreWantedAndTonesNeedNoDevice)
{
    DeskSettings desk(DeskFile());
    QWidget radar;
    QLabel line(&radar);
    line.hide();
    QAction action;
    AttentionControls controls(desk, action, line, radar);
    controls.Note(AttentionSign::Chat);
    controls.Refresh(false);
    EXPECT_TRUE(line.isHidden()) << "off at first";
    action.trigger();
    QWidget* const window = WaitFor("AttentionForm");
    In<QCheckBox>(window, "flashChat").setChecked(true);
    In<QCheckBox>(window, "soundChat").setChecked(true);
    controls.Note(AttentionSign::Chat);
    controls.Refresh(false);
    EXPECT_FALSE(line.isHidden());
    EXPECT_EQ(line.text(), "Chat");
    EXPECT_TRUE(WaitUntil([&] { return line.isHidden(); }));
    Click(window, "tryAlert");
    EXPECT_TRUE(DeskSettings(DeskFile()).Flag("attention/flash-chat", false));
    EXPECT_FALSE(DeskSettings(DeskFile()).Flag("attention/flash-join", false));
}

TEST_F(AppearanceTest, VoicesAreOffUntilThereIsAnEngineThatSpeaks)
{
    const bool speaks = VoiceSpeaker().CanSpeak();
    QWidget* const radar = StartInRadar();
    QAction& entry = In<QAction>(radar, "voices_op1");
    EXPECT_FALSE(entry.isChecked());
    Choose(radar, "voices_op1");
    EXPECT_EQ(entry.isChecked(), speaks);
    EXPECT_EQ(DeskSettings(DeskFile()).Flag(VoiceControls::Key, false), speaks);
    if (!speaks)
        EXPECT_THAT(m_shown.Last(), testing::HasSubstr("qt6-speech")) << "says what to install";
    else
        Choose(radar, "voices_op1");
    EXPECT_FALSE(entry.isChecked());
    EXPECT_FALSE(DeskSettings(DeskFile()).Flag(VoiceControls::Key, false));
}
} // namespace
} // namespace corvane
