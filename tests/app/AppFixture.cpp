#include "tests/app/AppFixture.h"

#include "core/AtomicFile.h"
#include "core/DatabaseFiles.h"
#include "core/File.h"

namespace corvane {
void ScriptedBoxes::Show(MessageIcon icon, std::string_view title, std::string_view text)
{
    EXPECT_EQ(title, "Corvane Message");
    std::string line = icon == MessageIcon::Information ? "information: " : "warning: ";
    Shown.push_back(line.append(text));
}

bool ScriptedBoxes::Confirm(std::string_view title, std::string_view text)
{
    EXPECT_EQ(title, "Corvane Message");
    Shown.push_back(std::string("question: ").append(text));
    return Answer;
}

AppTest::AppTest()
{
    State.AppFolder = m_folder.Path();
}

void AppTest::Write(const std::filesystem::path& name, std::string_view content) const
{
    const Bytes bytes(content.begin(), content.end());
    std::filesystem::create_directories((State.AppFolder / name).parent_path());
    ASSERT_TRUE(WriteFileAtomically(State.AppFolder / name, bytes));
}

void AppTest::WriteDataFiles() const
{
    for (const std::string_view name : DatabaseFileNames())
        Write(name);
    SettingsRecord settings;
    settings.FsPath = "C:\\Fs2002";
    settings.VorCount = 7;
    ASSERT_TRUE(WriteSettings(State.AppFolder / SettingsFileName, settings));
}

bool AppTest::Has(const std::filesystem::path& name) const
{
    return FileExists(State.AppFolder / name);
}

std::size_t AppTest::FileCount() const
{
    const std::filesystem::directory_iterator entries(State.AppFolder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}
} // namespace corvane
