#pragma once

#include "session/windows/ChatWindow.h"
#include "tests/app/windows/ProgramFixture.h"

#include <QApplication>
#include <QTextEdit>

#include <string_view>

namespace corvane {
/// The program in the radar, with the chat beside it, and as it is after it was started once more.
class DeskTest : public ProgramTest {
protected:
    /// A window that a menu entry of the radar opens.
    struct MenuWindow {
        const char* Entry;
        const char* Name;
    };
    static constexpr MenuWindow InTheRadarsPlace[] = {{"about_program1", "Form7"},
                                                      {"preferences_op1", "Form10"},
                                                      {"show_airpts_list1", "Form9"},
                                                      {"edit_players1", "Form11"},
                                                      {"load_all_db_files", "Form5"}};
    static constexpr MenuWindow BesideTheRadar[] = {{"find1", "Find"},
                                                    {"show_traffic1", "Traffic"},
                                                    {"second_scope1", "SecondScope"},
                                                    {"display_options_op1", "DisplayOptionsForm"},
                                                    {"appearance_op1", "AppearanceForm"},
                                                    {"signals_op1", "AttentionForm"},
                                                    {"debrief1", "Debrief"}};

    void SetUp() override
    {
        ProgramTest::SetUp();
        m_radar = StartInRadar();
        m_chat = WaitFor("Form6");
    }
    /// Ends the program and starts it again, with what the disk remembers.
    void StartOver()
    {
        m_program.reset();
        m_desk.reset();
        ReleaseSessionObjects(m_state.Session);
        m_state.Session.OwnPlayerId = 0;
        m_state.Players.Empty();
        Start();
    }
    void StartOverInRadar()
    {
        StartOver();
        PickAirport(WaitForLists(), "KSEA");
        m_radar = WaitFor("Form1");
        m_chat = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            m_chat = widget->objectName() == "Form6" ? widget : m_chat;
    }
    /// Keys that a window's shortcuts shall hear need it to be the active one.
    static void BringUp(QWidget* window)
    {
        window->activateWindow();
        EXPECT_TRUE(WaitUntil([&] { return QApplication::activeWindow() == window; }));
    }
    QLineEdit& Line() { return In<QLineEdit>(m_chat, "Text1"); }
    QString Shown() { return In<QTextEdit>(m_chat, "RichTextBox1").toPlainText(); }
    void Hear(std::string_view from, std::string_view text)
    {
        static_cast<ChatWindow*>(m_chat)->AddChatLine(from, text);
    }

    QWidget* m_radar = nullptr;
    QWidget* m_chat = nullptr;
};
} // namespace corvane
