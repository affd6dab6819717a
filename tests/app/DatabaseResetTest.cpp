#include "app/DatabaseReset.h"

#include "tests/app/AppFixture.h"

#include <gmock/gmock.h>

namespace corvane {
using testing::ElementsAre;
using testing::StartsWith;

class DatabaseReset : public AppTest {};

static constexpr const char* Question =
    "question: Do you want to delete the current database files to then create new database files?";

TEST_F(DatabaseReset, ChangesNothingWhenCancelled)
{
    WriteDataFiles();
    EXPECT_FALSE(CreateNewDatabaseFiles(State, Boxes));
    EXPECT_THAT(Boxes.Shown, ElementsAre(Question));
    EXPECT_EQ(FileCount(), 5U);
}

TEST_F(DatabaseReset, DeletesTheDataFilesAlone)
{
    WriteDataFiles();
    Write("world.map");
    Boxes.Answer = true;
    EXPECT_TRUE(CreateNewDatabaseFiles(State, Boxes));
    EXPECT_THAT(
        Boxes.Shown,
        ElementsAre(Question, StartsWith("information: The current database files were deleted, now you must")));
    EXPECT_EQ(FileCount(), 1U);
    EXPECT_TRUE(Has("world.map"));
}
} // namespace corvane
