#pragma once

#include <filesystem>
#include <optional>

namespace corvane {
/// The questions for a recording's file, as calls that a window answers in the program and a script in the tests.
/// Every call returns when the user has answered; nothing: the user thought better of it.
class RecordingDialogs {
public:
    virtual ~RecordingDialogs() = default;

    virtual std::optional<std::filesystem::path> AskWhereToRecord() = 0;
    virtual std::optional<std::filesystem::path> AskWhatToPlay() = 0;
};
} // namespace corvane
