#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>

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
    /// Takes the folder into the state and the rest as the scripted start. Ends the program where the arguments are
    /// wrong or the user's own folder cannot be made.
    ScriptedStart Read(const QCoreApplication& application, AppState& state);

private:
    QCommandLineParser m_parser;
    QCommandLineOption m_help;
    QCommandLineOption m_version;
    QCommandLineOption m_appFolder;
    QCommandLineOption m_airport;
    QCommandLineOption m_practice;
    QCommandLineOption m_screenshot;
    QCommandLineOption m_firstStart;
    QCommandLineOption m_userFolder;
    QCommandLineOption m_demo;
    QCommandLineOption m_display;
};
} // namespace corvane
