#include "app/SetUpModel.h"

#include "tests/app/AppFixture.h"

#include <gmock/gmock.h>

namespace corvane {
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class SetUpWindow : public AppTest {
protected:
    std::string Folder(const char* name) { return (State.AppFolder / name).string(); }

    SetUpModel Window{State, Boxes};
};

TEST_F(SetUpWindow, ReducesADriveRootToItsLetter)
{
    EXPECT_EQ(SetUpModel::PathAfterChange("C:\\"), "C:");
    EXPECT_EQ(SetUpModel::PathAfterChange("C:/"), "C:");
    EXPECT_EQ(SetUpModel::PathAfterChange("/tm"), "/tm");
    EXPECT_EQ(SetUpModel::PathAfterChange("C:\\F"), "C:\\F");
    EXPECT_EQ(SetUpModel::PathAfterChange("\\\\"), "\\\\");
    EXPECT_EQ(SetUpModel::PathAfterChange("abc"), "abc");
    EXPECT_EQ(SetUpModel::PathAfterChange("\u017c\\"), "\u017c\\"); // two characters, three bytes
}

TEST_F(SetUpWindow, WritesTheSettingsOfASimulatorFolderInAnyLetterCase)
{
    Write("sim/FS2002.EXE");
    EXPECT_TRUE(Window.NextStep(Folder("SIM") + "/\\", true)) << "typed with separators, which are not stored";
    EXPECT_THAT(Boxes.Shown, ElementsAre("information: Settings file created successfully!"));
    EXPECT_EQ(State.Settings.FsPath, Folder("SIM"));

    const auto written = ReadSettings(State.AppFolder / SettingsFileName);
    ASSERT_TRUE(written);
    EXPECT_EQ(*written, State.Settings);
    EXPECT_EQ(written->FsVersion, 1);
    EXPECT_EQ(written->RecordMark, 1);
    EXPECT_EQ(std::filesystem::file_size(State.AppFolder / SettingsFileName), 22 + 19 + Folder("SIM").size());

    EXPECT_FALSE(Window.Close()) << "the window closes, the program goes on";
    EXPECT_TRUE(Has(SettingsFileName));
}

TEST_F(SetUpWindow, LeavesTheVersionWithoutAnOption)
{
    Write("sim/fs2002.exe");
    EXPECT_TRUE(Window.NextStep(Folder("sim"), false));
    EXPECT_EQ(State.Settings.FsVersion, 0);
    Window.OptionClicked();
    EXPECT_EQ(State.Settings.FsVersion, 1);
}

TEST_F(SetUpWindow, StaysOnAFolderWithoutTheSimulator)
{
    Write("sim/readme.txt");
    std::filesystem::create_directories(State.AppFolder / "trap/fs2002.exe"); // a folder, not the program
    for (const std::string& path : {Folder("sim"), Folder("nowhere"), Folder("trap"), std::string()}) {
        Boxes.Shown.clear();
        EXPECT_FALSE(Window.NextStep(path, true));
        EXPECT_THAT(Boxes.Shown, ElementsAre("warning: The directory or path that you selected is not your currently "
                                             "FS2002 main folder, because this program didn't found the FS2002.EXE "
                                             "file. Please try again."));
    }
    EXPECT_FALSE(Has(SettingsFileName));
    EXPECT_EQ(State.Settings, SettingsRecord{});
}

TEST_F(SetUpWindow, SaysAtOnceThatTheSettingsCannotHoldAPath)
{
    Write("S\u00e3o/fs2002.exe");
    Write("\u017c\u00f3\u0142w/fs2002.exe");
    EXPECT_FALSE(Window.NextStep(Folder("\u017c\u00f3\u0142w"), true));
    EXPECT_THAT(Boxes.Shown, ElementsAre(StartsWith("warning: The settings file cannot hold the path of this folder")));
    EXPECT_FALSE(Has(SettingsFileName));
    EXPECT_TRUE(Window.NextStep(Folder("S\u00e3o"), true));
    EXPECT_EQ(State.Settings.FsPath, Folder("S\xe3o"));
}

TEST_F(SetUpWindow, TellsWhenTheSettingsCannotBeWritten)
{
    Write("sim/fs2002.exe");
    Write(std::filesystem::path(SettingsFileName) / "inside"); // a folder stands where the file should go
    EXPECT_FALSE(Window.NextStep(Folder("sim"), true));
    EXPECT_THAT(Boxes.Shown, ElementsAre(StartsWith("information: " + Folder("atc_settings.tcs") + ": ")));
    EXPECT_EQ(State.Settings, SettingsRecord{});
}

TEST_F(SetUpWindow, DeletesSettingsFilesWhenAbandoned)
{
    for (const char* name : {"atc_settings.tcs", "old.TCS", "keep.txt", "tcs"})
        Write(name);
    EXPECT_TRUE(Window.Close());
    EXPECT_THAT(Boxes.Shown, ElementsAre("information: You didn't finish setup process, program will end"));
    EXPECT_TRUE(Has("keep.txt"));
    EXPECT_TRUE(Has("tcs"));
    EXPECT_EQ(FileCount(), 2U);
}
} // namespace corvane
