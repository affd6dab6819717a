#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <string>

class QCoreApplication;

namespace corvane {
struct AppState;
struct ScriptedStart;

/// The command line of the desktop program.
class ProgramArguments {
public:
    ProgramArguments();

    /// Prints the help or the version where they are asked for, and ends the program: before there is a display, so
    /// that scripts and consoles without one can ask.
    void AnswerWithoutDisplay(int& argc, char** argv);
    /// Whether a script wants a picture; to be asked after that.
    [[nodiscard]] bool ForPicture() const { return m_parser.isSet(m_screenshot); }
    /// Takes the folder into the state and the rest as the scripted start. Ends the program where the arguments are
    /// wrong or the user's own folder cannot be made.
    ScriptedStart Read(const QCoreApplication& application, AppState& state);

private:
    /// Takes the name of a display set out of the arguments before the window system sees them: it has an option that
    /// is called the same, whose values are addresses with a colon. Those are left to it.
    void TakeDisplayName(int& argc, char** argv);

    QCommandLineParser m_parser;
    QCommandLineOption m_help;
    QCommandLineOption m_version;
    QCommandLineOption m_appFolder;
    QCommandLineOption m_airport;
    QCommandLineOption m_practice;
    QCommandLineOption m_scenario;
    QCommandLineOption m_screenshot;
    QCommandLineOption m_firstStart;
    QCommandLineOption m_userFolder;
    QCommandLineOption m_takeOver;
    QCommandLineOption m_demo;
    QCommandLineOption m_display;
    std::string m_displayName = "classic";
};
} // namespace corvane
