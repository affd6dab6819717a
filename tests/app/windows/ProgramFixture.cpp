#include "tests/app/windows/ProgramFixture.h"

#include "builder/BuildDriver.h"
#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/PathLookup.h"
#include "demo/DemoWorld.h"
#include "radar/windows/ScopeWidget.h"

#include <QApplication>

#include <utility>

namespace corvane {
void AnsweredBoxes::Show(MessageIcon icon, std::string_view title, std::string_view text)
{
    Icons.push_back(icon);
    EXPECT_TRUE(title == MessageTitle || title == "Corvane v3.0") << title;
    Texts.emplace_back(text);
    if (WhileOpen)
        std::exchange(WhileOpen, nullptr)();
}

bool AnsweredBoxes::Confirm(std::string_view /*title*/, std::string_view text)
{
    Texts.emplace_back(text);
    if (WhileOpen)
        std::exchange(WhileOpen, nullptr)();
    return ConfirmAnswer;
}

std::optional<std::string> AnsweredBoxes::AskText(std::string_view /*title*/, std::string_view prompt)
{
    Texts.emplace_back(prompt);
    return TextAnswer;
}

void ProgramTest::SetUp()
{
    constexpr int Airports = 80;
    const auto written = WriteDemoWorld({m_folder.Path(), DefaultDataFolder(), Airports});
    ASSERT_TRUE(written) << written.error().Text();
    m_state.AppFolder = m_folder.Path();
}

void ProgramTest::BuildDatabase() const
{
    BuildDriver driver(m_folder.Path(), FolderBeside(m_folder.Path(), "fs2002"), Fs2002Version);
    const auto built = driver.Run();
    ASSERT_TRUE(built) << built.error().Text();
}

void ProgramTest::Open()
{
    m_boxes = std::make_unique<ScriptedBoxes>(m_shown, m_script);
    m_desk = std::make_unique<DeskSettings>(DeskFile());
    m_program = std::make_unique<Program>(m_state, m_factory, m_practice, *m_boxes, m_script,
                                          RecordingParts{m_recorder, m_playback, m_dialogs, m_recorded}, *m_desk);
    m_program->Start();
}

void ProgramTest::Start()
{
    Open();
    Fire(Find("Form8"), "Timer1");
}

QWidget* ProgramTest::StartInSetup()
{
    Start();
    return WaitFor("Form3");
}

QWidget* ProgramTest::StartInBuilder()
{
    QWidget* const setup = StartInSetup();
    In<QLineEdit>(setup, "Text1").setText(QString::fromStdString(SimulatorFolder().string()));
    Click(setup, "Command1");
    QWidget* const builder = WaitFor("Form4");
    Fire(builder, "Read_Sceneries_Paths");
    EXPECT_TRUE(WaitUntil([&] { return In<QPushButton>(builder, "Command2").isEnabled(); }));
    return builder;
}

QWidget* ProgramTest::StartInChooser()
{
    BuildDatabase();
    Start();
    return WaitForLists();
}

QWidget* ProgramTest::StartInConnection()
{
    PickAirport(StartInChooser(), "KSEA");
    return WaitFor("Form2");
}

QWidget* ProgramTest::StartInRadar()
{
    m_script.Practice = true;
    PickAirport(StartInChooser(), "KSEA");
    return WaitFor("Form1");
}

QWidget* ProgramTest::Find(const char* name)
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == name && widget->isVisible())
            return widget;
    return nullptr;
}

QWidget* ProgramTest::WaitFor(const char* name)
{
    EXPECT_TRUE(WaitUntil([name] { return Find(name) != nullptr; })) << name;
    return Find(name);
}

bool ProgramTest::WaitUntilGone(const char* name)
{
    return WaitUntil([name] { return Find(name) == nullptr; });
}

QWidget* ProgramTest::WaitForLists()
{
    QWidget* const chooser = WaitFor("Form5");
    Fire(chooser, "Timer1");
    EXPECT_TRUE(WaitUntil([&] { return In<QLineEdit>(chooser, "Text2").text() == "Done"; }));
    return chooser;
}

void ProgramTest::Click(QWidget* window, const char* button)
{
    QTest::mouseClick(window->findChild<QPushButton*>(button), Qt::LeftButton);
}

/// Lets a timer that is running fire now, and nothing else.
void ProgramTest::Fire(QWidget* window, const char* timer)
{
    auto& found = In<QTimer>(window, timer);
    if (!found.isActive())
        return;
    QTimerEvent event(found.timerId());
    QCoreApplication::sendEvent(&found, &event);
}

void ProgramTest::PickAirport(QWidget* chooser, const QString& beginning)
{
    auto& airports = In<QComboBox>(chooser, "Combo1");
    const int found = airports.findText(beginning, Qt::MatchStartsWith);
    ASSERT_GE(found, 0) << beginning.toStdString();
    airports.setCurrentIndex(found);
    Click(chooser, "Command3");
}

QString ProgramTest::AnotherAirport(QWidget* chooser)
{
    const auto& airports = In<QComboBox>(chooser, "Combo1");
    return airports.itemText(airports.itemText(0).startsWith("KSEA") ? 1 : 0);
}

bool ProgramTest::Locate(QWidget* connection, const QString& beginning)
{
    In<QListWidget>(connection, "List1").setCurrentRow(0);
    Click(connection, "Command1");
    auto& sessions = In<QListWidget>(connection, "List2");
    const auto found = sessions.findItems(beginning, Qt::MatchStartsWith);
    if (!found.isEmpty())
        sessions.setCurrentItem(found.front());
    return !found.isEmpty();
}

bool ProgramTest::EndsTheProgram(const std::function<void()>& action)
{
    constexpr int StillRunning = 99;
    QTimer::singleShot(0, qApp, action);
    QTimer stop;
    QObject::connect(&stop, &QTimer::timeout, qApp, [] { QCoreApplication::exit(StillRunning); });
    stop.start(PatienceMs / 10);
    return QApplication::exec() == 0;
}

ScopeWidget& ProgramTest::Scope(QWidget* radar)
{
    return In<ScopeWidget>(radar, "Picture1");
}

QImage ProgramTest::Picture(QWidget* radar)
{
    return Scope(radar).grab().toImage();
}

ScopeView ProgramTest::OpeningView(QWidget* radar) const
{
    const ScopeWidget& scope = Scope(radar);
    return StartUpView(scope.width(), scope.height(), m_state.Area.AreaCenter);
}

bool ProgramTest::HasFile(std::string_view name) const
{
    return FileExists(m_folder.Path() / name);
}
} // namespace corvane
