#include "core/DatabaseFiles.h"
#include "tests/app/windows/ProgramFixture.h"
#include "world/Credits.h"

#include <QLineEdit>
#include <QProgressBar>

namespace corvane {
namespace {
using testing::HasSubstr;
using testing::StartsWith;

class WorldDataWindowTest : public ProgramTest {
protected:
    QWidget* StartInWorldData()
    {
        Click(StartInSetup(), "WorldData");
        QWidget* const window = WaitFor("WorldDataForm");
        for (const char* const line : {"Airports", "Navaids", "Airspaces"})
            In<QLineEdit>(window, line).clear(); // what this machine has
        return window;
    }
    static QString Sample(const char* name) { return QStringLiteral(CORVANE_WORLD_DATA "/") + name; }
};

TEST_F(WorldDataWindowTest, LeadsFromTheSetUpToTheChooserOverTheNewDatabase)
{
    QWidget* const window = StartInWorldData();
    EXPECT_FALSE(In<QPushButton>(window, "Create").isEnabled()) << "the scope needs airports";
    In<QLineEdit>(window, "Airports").setText(Sample("apt.dat"));
    In<QLineEdit>(window, "Navaids").setText(Sample("nav.dat"));
    In<QLineEdit>(window, "Airspaces").setText(Sample("airspaces.openair"));
    EXPECT_THAT(In<QLabel>(window, "Maps").text().toStdString(), StartsWith("Coastlines and borders"));
    Click(window, "Create");
    EXPECT_FALSE(In<QPushButton>(window, "Create").isEnabled()) << "once is enough";
    QWidget* const chooser = WaitForLists();
    EXPECT_EQ(In<QComboBox>(chooser, "Combo1").count(), 7);
    EXPECT_THAT(m_shown.Texts, testing::Contains(StartsWith("The database holds 7 airports, ")));
    EXPECT_TRUE(std::filesystem::exists(m_folder.Path() / CreditsFileName));
    EXPECT_TRUE(WaitUntilGone("WorldDataForm"));
}

TEST_F(WorldDataWindowTest, TellsWhatIsWrongAndLeadsBack)
{
    QWidget* const window = StartInWorldData();
    In<QLineEdit>(window, "Airports").setText(Sample("nav.dat"));
    Click(window, "Create");
    ASSERT_TRUE(WaitUntil([&] { return !m_shown.Texts.empty(); }));
    EXPECT_THAT(m_shown.Last(), HasSubstr("nav.dat: holds no airport"));
    EXPECT_EQ(m_shown.Icons.back(), MessageIcon::Warning);
    EXPECT_TRUE(In<QPushButton>(window, "Create").isEnabled()) << "another file may do";
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / AirportsFileName));
    EXPECT_EQ(In<QProgressBar>(window, "Progress").value(), 0);
    Click(window, "Back");
    EXPECT_NE(WaitFor("Form3"), nullptr);
}
} // namespace
} // namespace corvane
