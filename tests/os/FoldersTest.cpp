#include "os/Folders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace corvane {
namespace {
namespace fs = std::filesystem;

TEST(Folders, OfTheBuildTreeHoldTheProjectsData)
{
    EXPECT_EQ(ProgramFile().stem(), "corvane_os_tests");
    EXPECT_TRUE(fs::exists(SharedFolder("corvane") / "airports.csv"));
}

TEST(Folders, ThatAreMissingAreNamedWhereTheyBelong)
{
    const fs::path beside = ProgramFile().parent_path().parent_path() / "share/no-such-program";
    EXPECT_EQ(SharedFolder("no-such-program"), beside);
}

struct UserCase {
    const char* Name;
    const char* DataHome; ///< null: not set
    const char* Home;
    const char* Folder;
};
class UserFolder : public testing::TestWithParam<UserCase> {
protected:
    void SetUp() override { Set(GetParam().DataHome, GetParam().Home); }
    void TearDown() override { Set(m_dataHome ? m_dataHome->c_str() : nullptr, m_home ? m_home->c_str() : nullptr); }

private:
    static std::optional<std::string> Get(const char* name)
    {
        const char* const value = std::getenv(name);
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    }
    static void Set(const char* dataHome, const char* home)
    {
        dataHome == nullptr ? unsetenv("XDG_DATA_HOME") : setenv("XDG_DATA_HOME", dataHome, 1);
        home == nullptr ? unsetenv("HOME") : setenv("HOME", home, 1);
    }

    std::optional<std::string> m_dataHome = Get("XDG_DATA_HOME");
    std::optional<std::string> m_home = Get("HOME");
};

TEST_P(UserFolder, FollowsTheEnvironment)
{
    EXPECT_EQ(UserDataFolder("corvane"), fs::path(GetParam().Folder));
}

INSTANTIATE_TEST_SUITE_P(Os, UserFolder,
                         testing::Values(UserCase{"DataHome", "/data", "/home/ann", "/data/corvane"},
                                         UserCase{"Home", nullptr, "/home/ann", "/home/ann/.local/share/corvane"},
                                         UserCase{"EmptyDataHome", "", "/home/ann", "/home/ann/.local/share/corvane"},
                                         UserCase{"RelativeDataHome", "data", "/a", "/a/.local/share/corvane"},
                                         UserCase{"Neither", nullptr, nullptr, ""}),
                         [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane
