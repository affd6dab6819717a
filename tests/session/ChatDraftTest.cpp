#include "session/ChatDraft.h"

#include "session/ChatModel.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {
TEST(ChatDrafts, RecallWhatWasSentAndGiveBackWhatWasTyped)
{
    ChatDraft draft;
    EXPECT_EQ(draft.Older("typed"), "typed");
    for (const char* line : {"one", "two", "two", ""})
        draft.Sent(line);
    EXPECT_EQ(draft.Older("typed"), "two");
    EXPECT_EQ(draft.Older("two"), "one");
    EXPECT_EQ(draft.Older("one"), "one") << "the oldest";
    EXPECT_EQ(draft.Newer("one"), "two");
    EXPECT_EQ(draft.Newer("two"), "typed");
    EXPECT_EQ(draft.Newer("typed"), "typed");
    for (std::size_t i = 0; i < 2 * ChatDraft::LinesKept; ++i)
        draft.Sent(std::to_string(i));
    for (std::size_t i = 0; i < 2 * ChatDraft::LinesKept; ++i)
        draft.Older("");
    EXPECT_EQ(draft.Older(""), std::to_string(ChatDraft::LinesKept));
}

struct CompletionCase {
    const char* Typed;
    const char* Completed;
};
TEST(ChatDrafts, CompleteTheLastWordToACallsign)
{
    const std::vector<std::string> names = {"**Tower", "N123AB", "N123CD", "Ann", "ann", "N123AB"};
    for (const CompletionCase& c : {CompletionCase{"n123a", "N123AB "},
                                    {"hello to", "hello Tower "},
                                    {"N1", "N123"},
                                    {"N123", "N123"},
                                    {"an", "Ann"},
                                    {"", ""},
                                    {"n123a ", "n123a "},
                                    {"x", "x"},
                                    {"n123abc", "n123abc"},
                                    {"**", "**"}})
        EXPECT_EQ(CompleteCallsign(c.Typed, names), c.Completed) << c.Typed;
}

TEST(ChatDrafts, PutTheSelectedPilotIntoAReadyText)
{
    EXPECT_EQ(ReadyText("%c, climb 100%% of %c%", "**Ann"), "Ann, climb 100% of Ann%");
    EXPECT_EQ(ReadyText("%d %c", ""), "%d ");
}

TEST(ChatDrafts, TheLogCountsItsLines)
{
    ChatModel log;
    log.AddChatLine("A", "hi\r\nB: no");
    EXPECT_EQ(log.LineCount(), 2U);
    const std::string longLine(1000, 'x');
    for (std::size_t i = 0; i < 2 * ChatModel::HistoryLimit / longLine.size(); ++i)
        log.AddChatLine("A", longLine);
    EXPECT_EQ(log.LineCount(), ChatModel::HistoryLimit / (longLine.size() + 5)) << "the rest is forgotten";
}
} // namespace
} // namespace corvane
