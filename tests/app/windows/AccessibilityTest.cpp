#include "tests/app/windows/DeskFixture.h"

#include <QAccessible>

#include <string>
#include <vector>

// What a screen reader finds: each window's tree is walked as assistive programs walk it.

namespace corvane {
namespace {
bool IsControl(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::PushButton:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::ProgressBar:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::MenuItem:
    case QAccessible::ButtonMenu:
    case QAccessible::PageTab:
    case QAccessible::Slider: return true;
    default: return false;
    }
}

/// The controls that nobody could tell from others: by their object names, those inside of other controls left out.
void AddUnnamed(QAccessibleInterface* at, std::vector<std::string>& unnamed, int& seen)
{
    if (at == nullptr || !at->isValid() || at->state().invisible)
        return;
    const QAccessible::Role role = at->role();
    if (IsControl(role)) {
        ++seen;
        if (at->text(QAccessible::Name).trimmed().isEmpty())
            unnamed.push_back(at->object() == nullptr ? "?" : at->object()->objectName().toStdString());
        if (role != QAccessible::MenuItem)
            return;
    }
    for (int i = 0; i < at->childCount(); ++i)
        AddUnnamed(at->child(i), unnamed, seen);
}

void ExpectNames(QWidget* window)
{
    std::vector<std::string> unnamed;
    int seen = 0;
    AddUnnamed(QAccessible::queryAccessibleInterface(window), unnamed, seen);
    EXPECT_GT(seen, 0) << window->objectName().toStdString();
    EXPECT_THAT(unnamed, testing::IsEmpty()) << window->objectName().toStdString();
    EXPECT_FALSE(window->windowTitle().isEmpty()) << window->objectName().toStdString();
}

class AccessibilityTest : public ProgramTest {};

TEST_F(AccessibilityTest, SetUpAndBuilder)
{
    ExpectNames(StartInBuilder());
}

TEST_F(AccessibilityTest, FirstStartAndWorldData)
{
    QWidget* const setup = StartInSetup();
    ExpectNames(setup);
    QPushButton* const world = setup->findChild<QPushButton*>("WorldData");
    ASSERT_NE(world, nullptr);
    world->click();
    ExpectNames(WaitFor("WorldDataForm"));
}

TEST_F(AccessibilityTest, ChooserAndConnection)
{
    QWidget* const chooser = StartInChooser();
    ExpectNames(chooser);
    PickAirport(chooser, "KSEA");
    ExpectNames(WaitFor("Form2"));
}

TEST_F(DeskTest, EveryControlOfTheRadarsWindowsHasAName)
{
    ExpectNames(m_radar);
    ExpectNames(m_chat);
    for (const auto& [entry, name] : {std::pair("find1", "Find"),
                                      {"show_traffic1", "Traffic"},
                                      {"second_scope1", "SecondScope"},
                                      {"display_options_op1", "DisplayOptionsForm"},
                                      {"appearance_op1", "AppearanceForm"},
                                      {"signals_op1", "AttentionForm"},
                                      {"debrief1", "Debrief"}}) {
        Choose(m_radar, entry);
        QWidget* const window = WaitFor(name);
        ExpectNames(window);
        window->close();
    }
    for (const auto& [entry, name] : {std::pair("about_program1", "Form7"),
                                      {"preferences_op1", "Form10"},
                                      {"show_airpts_list1", "Form9"},
                                      {"edit_players1", "Form11"},
                                      {"load_all_db_files", "Form5"}}) {
        Choose(m_radar, entry);
        QWidget* const window = WaitFor(name);
        ExpectNames(window);
        window->close();
        ASSERT_TRUE(WaitUntilGone(name));
    }
}
} // namespace
} // namespace corvane
