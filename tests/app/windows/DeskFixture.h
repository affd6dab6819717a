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
