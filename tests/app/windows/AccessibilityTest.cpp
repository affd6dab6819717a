#include "tests/app/windows/DeskFixture.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>

#include <set>
#include <string>
#include <vector>

// What a screen reader finds: each window's tree is walked as assistive programs walk it. And what the keyboard finds:
// each letter that Alt or an open menu answers to stands for one thing.

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

/// Of the texts that are on the screen at once, no two answer to the same letter.
void ExpectLettersOfTheirOwn(const QStringList& texts, const std::string& where)
{
    std::set<QString> letters;
    for (const QString& text : texts) {
        const QString letter = QKeySequence::mnemonic(text).toString();
        EXPECT_TRUE(letter.isEmpty() || letters.insert(letter).second) << where << ": " << text.toStdString();
    }
}

QStringList TextsOf(const QList<QAction*>& entries)
{
    QStringList texts;
    for (const QAction* entry : entries)
        texts << entry->text();
    return texts;
}

void ExpectLetters(const QWidget& window)
{
    const std::string name = window.objectName().toStdString();
    QStringList texts;
    for (const auto* bar : window.findChildren<QMenuBar*>())
        texts << TextsOf(bar->actions());
    for (const auto* label : window.findChildren<QLabel*>())
        if (label->buddy() != nullptr)
            texts << label->text();
    for (const auto* button : window.findChildren<QAbstractButton*>())
        texts << button->text();
    for (const auto* tabs : window.findChildren<QTabBar*>())
        for (int i = 0; i < tabs->count(); ++i)
            texts << tabs->tabText(i);
    ExpectLettersOfTheirOwn(texts, name);
    for (const auto* menu : window.findChildren<QMenu*>())
        ExpectLettersOfTheirOwn(TextsOf(menu->actions()), name + ", menu " + menu->title().toStdString());
}

void ExpectUsable(QWidget* window)
{
    ExpectLetters(*window);
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
    ExpectUsable(StartInBuilder());
}

TEST_F(AccessibilityTest, FirstStartAndWorldData)
{
    QWidget* const setup = StartInSetup();
    ExpectUsable(setup);
    QPushButton* const world = setup->findChild<QPushButton*>("WorldData");
    ASSERT_NE(world, nullptr);
    world->click();
    ExpectUsable(WaitFor("WorldDataForm"));
}

TEST_F(AccessibilityTest, ChooserAndConnection)
{
    QWidget* const chooser = StartInChooser();
    ExpectUsable(chooser);
    PickAirport(chooser, "KSEA");
    ExpectUsable(WaitFor("Form2"));
}

TEST_F(DeskTest, EveryControlOfTheRadarsWindowsHasANameAndALetterOfItsOwn)
{
    ExpectUsable(m_radar);
    ExpectUsable(m_chat);
    for (const auto& [entry, name] : BesideTheRadar) {
        Choose(m_radar, entry);
        QWidget* const window = WaitFor(name);
        ExpectUsable(window);
        window->close();
    }
    for (const auto& [entry, name] : InTheRadarsPlace) {
        Choose(m_radar, entry);
        QWidget* const window = WaitFor(name);
        ExpectUsable(window);
        window->close();
        ASSERT_TRUE(WaitUntilGone(name));
    }
}
} // namespace
} // namespace corvane
