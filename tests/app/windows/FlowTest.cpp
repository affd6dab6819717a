#include "core/DatabaseFiles.h"
#include "core/Settings.h"
#include "tests/app/windows/ProgramFixture.h"

#include <QApplication>
#include <QFileSystemModel>
#include <QProgressBar>
#include <QRadioButton>
#include <QTextEdit>
#include <QTreeView>

// The flow of windows from the splash to the radar and back, and every way out of it.

namespace corvane {
namespace {
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

TEST_F(ProgramTest, FirstStartLeadsFromTheSetUpToTheRadar)
{
    QWidget* const setup = StartInSetup();
    EXPECT_EQ(Find("Form8"), nullptr);
    EXPECT_TRUE(In<QRadioButton>(setup, "Option1").isChecked());
    auto& path = In<QLineEdit>(setup, "Text1");
    path.setFocus();
    path.clear();
    QTest::keyClicks(&path, "/nowhere");
    QTest::keyClick(&path, Qt::Key_Return);
    EXPECT_THAT(m_shown.Last(), HasSubstr("didn't found the FS2002.EXE file"));
    EXPECT_EQ(m_shown.Icons.back(), MessageIcon::Warning);
    path.clear();
    QTest::keyClicks(&path, QString::fromStdString((m_folder.Path() / "FS2002").string())); // the disk spells it small
    Click(setup, "Command1");
    EXPECT_EQ(m_shown.Last(), "Settings file created successfully!");

    QWidget* const builder = WaitFor("Form4");
    EXPECT_EQ(In<QLineEdit>(builder, "Text1").text(), "-None-");
    EXPECT_EQ(In<QTimer>(builder, "Read_Sceneries_Paths").interval(), 1000);
    EXPECT_EQ(In<QTimer>(builder, "Read_All_Airports").interval(), 5);
    auto& create = In<QPushButton>(builder, "Command2");
    EXPECT_FALSE(create.isEnabled()) << "not before the preparation";
    Fire(builder, "Read_Sceneries_Paths");
    ASSERT_TRUE(WaitUntil([&] { return create.isEnabled(); }));
    EXPECT_EQ(In<QLineEdit>(builder, "Text1").text(), "Done");
    QTest::keyClick(&create, Qt::Key_Space);

    QWidget* const chooser = WaitForLists();
    EXPECT_THAT(m_shown.Texts, testing::Contains("Now the create database file process will begin, this can take a few "
                                                 "minutes, please wait"));
    EXPECT_EQ(m_shown.Last(), "The creation process, of the database files, was completed!");
    auto& airports = In<QComboBox>(chooser, "Combo1");
    EXPECT_EQ(airports.count(), m_state.Settings.AirportCount);
    Click(chooser, "Command3");
    EXPECT_EQ(Find("Form5"), chooser) << "nothing picked: nothing happens";
    airports.setFocus();
    QTest::keyClicks(&airports, "ksea"); // type-ahead, then the only entry that is left
    auto* const offered = QApplication::activePopupWidget();
    ASSERT_NE(offered, nullptr);
    QTest::keyClick(offered, Qt::Key_Down);
    QTest::keyClick(offered, Qt::Key_Return);
    EXPECT_THAT(airports.currentText().toStdString(), StartsWith("KSEA - "));
    auto& noMatch = In<QLabel>(chooser, "NoMatch1");
    airports.lineEdit()->selectAll();
    QTest::keyClicks(&airports, "no such airport");
    EXPECT_TRUE(noMatch.isVisible());
    QTest::keyClick(&airports, Qt::Key_Down);
    EXPECT_EQ(airports.currentText(), "no such airport") << "not the list's first entry";
    Click(chooser, "Command3");
    EXPECT_EQ(Find("Form5"), chooser);
    airports.lineEdit()->selectAll();
    QTest::keyClicks(&airports, "ksea");
    QApplication::activePopupWidget()->hide();
    EXPECT_FALSE(noMatch.isVisible());
    QTest::keyClick(&airports, Qt::Key_Return);
    EXPECT_THAT(airports.currentText().toStdString(), StartsWith("KSEA - ")) << "Return takes what is meant";
    Click(chooser, "Command3");

    QWidget* const connection = WaitFor("Form2");
    EXPECT_EQ(In<QLabel>(connection, "Label5").text(), "-None-");
    ASSERT_TRUE(Locate(connection, "Practice"));
    EXPECT_EQ(In<QLabel>(connection, "Label5").text(), "Done");
    QTest::keyClick(&In<QLineEdit>(connection, "Text1"), Qt::Key_Return);

    QWidget* const radar = WaitFor("Form1");
    EXPECT_EQ(m_shown.Last(), "Connected to FS session!");
    EXPECT_THAT(radar->windowTitle().toStdString(), StartsWith("Corvane v3.0 - KSEA - "));
    EXPECT_EQ(In<QLabel>(radar, "Label7").text(), "x14");
    EXPECT_TRUE(WaitUntilGone("Form2"));
    EXPECT_NE(Find("Form6"), nullptr);
    for (const auto& [name, interval] :
         {std::pair("Timer1", 100), {"Timer2", 1000}, {"Timer3", 30000}, {"Timer4", 500}}) {
        EXPECT_TRUE(In<QTimer>(radar, name).isActive()) << name;
        EXPECT_EQ(In<QTimer>(radar, name).interval(), interval) << name;
    }
}

TEST_F(ProgramTest, TheSplashStaysThreeSeconds)
{
    Open();
    QWidget* const splash = Find("Form8");
    ASSERT_NE(splash, nullptr);
    EXPECT_EQ(splash->windowTitle(), "Corvane Version 3.0");
    EXPECT_EQ(In<QTimer>(splash, "Timer1").interval(), 3000);
    EXPECT_TRUE(In<QTimer>(splash, "Timer1").isActive());
}

TEST_F(ProgramTest, SettingsOfAnotherVersionAreReplacedWithAWord)
{
    BuildDatabase();
    SettingsRecord settings = *ReadSettings(m_folder.Path() / SettingsFileName);
    settings.VersionText = "Corvane Version 2.0";
    ASSERT_TRUE(WriteSettings(m_folder.Path() / SettingsFileName, settings));
    m_script.Practice = true; // which presses the boxes of its own join alone
    m_shown.WhileOpen = [] { EXPECT_NE(Find("Form8"), nullptr) << "the splash closes after the message"; };
    QWidget* const setup = StartInSetup();
    EXPECT_THAT(m_shown.Texts, testing::ElementsAre(StartsWith("Corvane needs to update your database files")));
    for (const std::string_view name : DataFileNames())
        EXPECT_FALSE(HasFile(name)) << name;
    EXPECT_TRUE(EndsTheProgram([&] { setup->close(); }));
    EXPECT_EQ(m_shown.Last(), "You didn't finish setup process, program will end");
}

TEST_F(ProgramTest, TheSetUpsFoldersOpenWhereThePathSays)
{
    const std::filesystem::path home = m_folder.Path() / "homes" / "zoe";
    std::filesystem::create_directories(home / "inside");
    for (char neighbour = 'a'; neighbour < 'z'; ++neighbour)
        std::filesystem::create_directory(m_folder.Path() / "homes" / std::string(1, neighbour));
    const auto oldHome = qgetenv("HOME");
    qputenv("HOME", QByteArray::fromStdString(home.string()));
    QWidget* const setup = StartInSetup();
    qputenv("HOME", oldHome);
    auto& folders = In<QTreeView>(setup, "Dir1");
    const auto shown = [&] {
        const QModelIndex current = folders.currentIndex();
        return folders.visualRect(current).isValid() &&
               folders.viewport()->rect().contains(folders.visualRect(current).center()) &&
               qobject_cast<QFileSystemModel*>(folders.model())->filePath(current) ==
                   In<QLineEdit>(setup, "Text1").text();
    };
    EXPECT_EQ(In<QLineEdit>(setup, "Text1").text().toStdString(), home.string());
    EXPECT_TRUE(WaitUntil([&] { return folders.model()->rowCount(folders.currentIndex().parent()) >= 26; }));
    EXPECT_TRUE(WaitUntil(shown));
    EXPECT_TRUE(home.string().starts_with(In<QComboBox>(setup, "Drive1").currentText().toStdString()));
}

TEST_F(ProgramTest, ClosingTheSetUpEndsTheProgram)
{
    QWidget* const setup = StartInSetup();
    EXPECT_TRUE(EndsTheProgram([&] { setup->close(); }));
    EXPECT_EQ(m_shown.Last(), "You didn't finish setup process, program will end");
}

TEST_F(ProgramTest, ClosingTheBuilderDuringTheScanAsksThenEndsAndLeavesNothing)
{
    QWidget* const builder = StartInBuilder();
    Click(builder, "Command2");
    auto& progress = In<QProgressBar>(builder, "ProgressBar1");
    ASSERT_TRUE(WaitUntil([&] { return progress.value() > 3; }));
    builder->close();
    EXPECT_THAT(m_shown.Last(), HasSubstr("not complete"));
    EXPECT_TRUE(builder->isVisible()) << "cancelled: the scan goes on";
    const int before = progress.value();
    ASSERT_TRUE(WaitUntil([&] { return progress.value() > before; }));
    m_shown.ConfirmAnswer = true;
    EXPECT_TRUE(EndsTheProgram([&] { builder->close(); }));
    m_program.reset();
    std::size_t left = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.Path())) {
        const std::string name = entry.path().filename().string();
        left += name.starts_with("world_a") || name.ends_with(".tcs") || name.ends_with(".part") ? 1 : 0;
    }
    EXPECT_EQ(left, 0U);
}

TEST_F(ProgramTest, ClosingTheChooserBeforeASessionEndsTheProgram)
{
    QWidget* const chooser = StartInChooser();
    EXPECT_TRUE(EndsTheProgram([&] { chooser->close(); }));
}

TEST_F(ProgramTest, AChooserThatIsLeftBeforeItsListsReadsNothing)
{
    BuildDatabase();
    Start();
    QWidget* const chooser = WaitFor("Form5");
    EXPECT_TRUE(EndsTheProgram([&] { Click(chooser, "Command2"); }));
    EXPECT_FALSE(In<QTimer>(chooser, "Timer1").isActive());
}

TEST_F(ProgramTest, TheChoosersExitEndsTheProgram)
{
    QWidget* const chooser = StartInChooser();
    EXPECT_TRUE(EndsTheProgram([&] { Click(chooser, "Command2"); }));
}

TEST_F(ProgramTest, TheChoosersOpeningCanBeLeft)
{
    BuildDatabase();
    Start();
    QWidget* const chooser = WaitFor("Form5");
    QObject::connect(&In<QLineEdit>(chooser, "Text2"), &QLineEdit::textChanged, chooser,
                     [&] { QTimer::singleShot(0, chooser, [&] { chooser->close(); }); }); // while a file is being read
    EXPECT_TRUE(EndsTheProgram([&] { In<QTimer>(chooser, "Timer1").start(0); }));
    EXPECT_TRUE(m_state.AllAirspaces.empty());
}

TEST_F(ProgramTest, TheConnectionsExitEmptiesTheAreaAndEndsTheProgram)
{
    for (const bool byFrame : {true, false}) {
        QWidget* const connection = byFrame ? StartInConnection() : Find("Form2");
        EXPECT_TRUE(
            EndsTheProgram([&] { byFrame ? static_cast<void>(connection->close()) : Click(connection, "Command3"); }));
        EXPECT_TRUE(m_state.Area.AreaAirports.empty());
    }
}

TEST_F(ProgramTest, DisconnectReturnsToTheConnectionAndRejoins)
{
    for (const bool byFrame : {false, true}) {
        QWidget* const radar = byFrame ? Find("Form1") : StartInRadar();
        ASSERT_NE(radar, nullptr);
        ASSERT_TRUE(WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }));
        if (byFrame)
            radar->close();
        else
            Click(radar, "Command3");
        QWidget* const connection = WaitFor("Form2");
        EXPECT_TRUE(WaitUntilGone("Form1"));
        EXPECT_EQ(Find("Form6"), nullptr);
        EXPECT_EQ(m_state.Players.PlayerCount(), 0U);
        EXPECT_FALSE(m_state.Session.RadarOpen);
        ASSERT_TRUE(Locate(connection, "Practice"));
        Click(connection, "Command2");
        ASSERT_NE(WaitFor("Form1"), nullptr);
        EXPECT_EQ(In<QTextEdit>(WaitFor("Form6"), "RichTextBox1").toPlainText(), "[Corvane v3.0]");
    }
}

TEST_F(ProgramTest, NewDatabaseFilesAreConfirmedFirst)
{
    QWidget* const radar = StartInRadar();
    Choose(radar, "create_new_db1");
    EXPECT_TRUE(radar->isEnabled()) << "cancelled: given back";
    EXPECT_TRUE(HasFile(SettingsFileName));
    m_shown.ConfirmAnswer = true;
    EXPECT_TRUE(EndsTheProgram([&] { Choose(radar, "create_new_db1"); }));
    EXPECT_THAT(m_shown.Last(), EndsWith("Now the program will end."));
    for (const std::string_view name : DataFileNames())
        EXPECT_FALSE(HasFile(name)) << name;
    EXPECT_EQ(m_state.Session.SessionPeer, nullptr);
}
} // namespace
} // namespace corvane
