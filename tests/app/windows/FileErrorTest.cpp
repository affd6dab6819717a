#include "area/WorldOutlines.h"
#include "core/DatabaseFiles.h"
#include "core/Settings.h"
#include "tests/app/windows/ProgramFixture.h"
#include "tests/core/FileSizeLimit.h"

#include <QCheckBox>
#include <QTableWidget>

#include <filesystem>
#include <fstream>

// Files that cannot be read or written: the person learns which and what to do, and goes on where that is possible.

namespace corvane {
namespace {
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;

class FileErrorTest : public ProgramTest {
protected:
    [[nodiscard]] std::filesystem::path File(std::string_view name) const { return m_folder.Path() / name; }
    /// A folder in a file's place, which is not empty and so cannot be deleted as files are.
    void PutFolderInPlaceOf(std::string_view name) const
    {
        std::filesystem::remove(File(name));
        std::filesystem::create_directories(File(name) / "occupied");
    }
    /// Makes a database file one whose only record is no record.
    void Damage(std::string_view name) const
    {
        std::string content(60, '\0'); // four texts, NextPos and six bounds
        content += '\7';               // dimensions, of which lists have one at most
        content.append(40, '\0');
        std::ofstream(File(name), std::ios::binary) << content;
    }
    void CutToHalf(std::string_view name) const
    {
        std::filesystem::resize_file(File(name), std::filesystem::file_size(File(name)) / 2);
    }
    [[nodiscard]] auto Names(std::string_view file) const { return HasSubstr(File(file).string()); }
};

TEST_F(FileErrorTest, SettingsThatCannotBeSavedKeepTheSetUpOpen)
{
    PutFolderInPlaceOf(SettingsFileName);
    QWidget* const setup = StartInSetup();
    In<QLineEdit>(setup, "Text1").setText(QString::fromStdString(SimulatorFolder().string()));
    Click(setup, "Command1");
    EXPECT_THAT(m_shown.Last(), AllOf(Names(SettingsFileName), HasSubstr("Make the folder writable")));
    std::filesystem::remove_all(File(SettingsFileName));
    {
        const FileSizeLimit limit(16);
        Click(setup, "Command1");
    }
    EXPECT_THAT(m_shown.Last(), AllOf(Names(SettingsFileName), HasSubstr("File too large")));
    EXPECT_TRUE(setup->isVisible());
    Click(setup, "Command1");
    EXPECT_EQ(m_shown.Last(), "Settings file created successfully!");
    EXPECT_NE(WaitFor("Form4"), nullptr);
}

TEST_F(FileErrorTest, ASimulatorFolderThatHasMovedIsAskedForAgain)
{
    QWidget* const setup = StartInSetup();
    In<QLineEdit>(setup, "Text1").setText(QString::fromStdString(SimulatorFolder().string()));
    Click(setup, "Command1");
    const std::filesystem::path elsewhere = m_folder.Path() / "moved";
    std::filesystem::rename(SimulatorFolder(), elsewhere);
    Fire(WaitFor("Form4"), "Read_Sceneries_Paths");
    EXPECT_THAT(m_shown.Last(), AllOf(HasSubstr("scenery.cfg"), HasSubstr("select your Flight Simulator's main path")));
    QWidget* const again = WaitFor("Form3");
    EXPECT_EQ(Find("Form4"), nullptr);
    EXPECT_FALSE(HasFile(SettingsFileName));
    In<QLineEdit>(again, "Text1").setText(QString::fromStdString(elsewhere.string()));
    Click(again, "Command1");
    QWidget* const builder = WaitFor("Form4");
    Fire(builder, "Read_Sceneries_Paths");
    EXPECT_TRUE(WaitUntil([&] { return In<QPushButton>(builder, "Command2").isEnabled(); }));
}

TEST_F(FileErrorTest, ADiskThatFillsUpDuringTheScanIsToBlameAndNotTheScenery)
{
    QWidget* const builder = StartInBuilder();
    const FileSizeLimit limit(65536);
    EXPECT_TRUE(EndsTheProgram([&] { Click(builder, "Command2"); }));
    EXPECT_THAT(m_shown.Last(), AllOf(Names("world_air"), HasSubstr("File too large"), HasSubstr("Make room"),
                                      testing::Not(HasSubstr("BGL"))));
    EXPECT_EQ(m_shown.Icons.back(), MessageIcon::Critical);
    for (const std::string_view name : DataFileNames())
        EXPECT_FALSE(HasFile(name)) << name;
}

TEST_F(FileErrorTest, ABuildGoesPastASceneryFileThatFailsOnRequest)
{
    QWidget* const builder = StartInBuilder();
    for (const auto& entry : std::filesystem::recursive_directory_iterator(SimulatorFolder())) {
        if (entry.path().extension() == ".bgl" && entry.path().stem() != "magdec") {
            std::filesystem::remove(entry.path());
            break;
        }
    }
    In<QCheckBox>(builder, "KeepGoing").setChecked(true);
    QString reason;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, builder, [&] {
        if (QWidget* const report = Find("BuildReport")) {
            reason = In<QTableWidget>(report, "Problems").item(0, 4)->text();
            Click(report, "CloseButton");
        }
    });
    look.start(20);
    Click(builder, "Command2");
    EXPECT_NE(WaitFor("Form5"), nullptr);
    EXPECT_EQ(reason, "No such file or directory");
    EXPECT_TRUE(HasFile(SettingsFileName));
}

TEST_F(FileErrorTest, TheChooserCanBeUsedWithoutAListThatCannotBeRead)
{
    BuildDatabase();
    Damage(AirspacesFileName);
    Start();
    QWidget* const chooser = WaitForLists();
    EXPECT_THAT(m_shown.Last(), AllOf(Names(AirspacesFileName), HasSubstr("create the database files again")));
    EXPECT_EQ(In<QComboBox>(chooser, "Combo2").count(), 0);
    PickAirport(chooser, "KSEA");
    EXPECT_NE(WaitFor("Form2"), nullptr);
}

TEST_F(FileErrorTest, TheChooserLeavesForTheSetUpWhereADatabaseFileIsDamaged)
{
    BuildDatabase();
    Damage(AirspacesFileName);
    m_shown.ConfirmAnswer = true;
    Start();
    EXPECT_NE(WaitFor("Form3"), nullptr);
    EXPECT_EQ(Find("Form5"), nullptr);
    for (const std::string_view name : DataFileNames())
        EXPECT_FALSE(HasFile(name)) << name;
}

TEST_F(FileErrorTest, TheChooserDoesNotAdviseABuildForAFileThatNoneMakes)
{
    BuildDatabase();
    PutFolderInPlaceOf(WorldMapFileName);
    m_shown.ConfirmAnswer = true;
    QWidget* const chooser = StartInChooser();
    PickAirport(chooser, "KSEA");
    ASSERT_TRUE(WaitUntil([&] { return !m_shown.Texts.empty(); }));
    EXPECT_THAT(m_shown.Last(), AllOf(Names(WorldMapFileName), EndsWith("Put the file right and try again.")));
    EXPECT_TRUE(chooser->isVisible());
}

TEST_F(FileErrorTest, ADatabaseThatVanishesLeavesThePreviousAreaAndOneThatIsCutServes)
{
    QWidget* const radar = StartInRadar();
    const QString caption = radar->windowTitle();
    const auto airports = m_state.Area.AreaAirports;
    Choose(radar, "load_all_db_files");
    QWidget* const chooser = WaitForLists();
    const QString other = AnotherAirport(chooser);
    const auto expectFailure = [&](std::string_view file) {
        const std::size_t boxes = m_shown.Texts.size();
        PickAirport(chooser, other);
        ASSERT_TRUE(WaitUntil([&] { return m_shown.Texts.size() > boxes; }));
        EXPECT_THAT(m_shown.Last(), AllOf(Names(file), HasSubstr("The area was not loaded. Put the file right")));
        EXPECT_TRUE(chooser->isVisible());
        EXPECT_TRUE(In<QPushButton>(chooser, "Command3").isEnabled());
        EXPECT_EQ(m_state.Area.AreaAirports, airports);
    };
    const std::filesystem::path aside = File("aside");
    for (const std::string_view name : {AirportsFileName, VorsFileName, NdbsFileName}) {
        std::filesystem::rename(File(name), aside);
        expectFailure(name);
        std::filesystem::rename(aside, File(name));
    }
    std::filesystem::rename(File(WorldMapFileName), aside);
    PutFolderInPlaceOf(WorldMapFileName);
    expectFailure(WorldMapFileName);
    std::filesystem::remove_all(File(WorldMapFileName)); // an absent map is no error: there are no outlines

    EXPECT_EQ(radar->windowTitle(), caption);
    CutToHalf(VorsFileName);
    PickAirport(chooser, other);
    ASSERT_TRUE(WaitUntilGone("Form5"));
    EXPECT_THAT(m_shown.Last(), AllOf(Names(VorsFileName), HasSubstr("create the database again")));
    EXPECT_EQ(radar->windowTitle(), "Corvane v3.0 - " + other);
    EXPECT_TRUE(radar->isEnabled());
}
} // namespace
} // namespace corvane
