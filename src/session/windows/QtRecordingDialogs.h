#pragma once

#include "recording/RecordingDialogs.h"

namespace corvane {
/// The questions for a recording's file as modal file dialogs. Timers go on while one is open.
class QtRecordingDialogs final : public RecordingDialogs {
public:
    std::optional<std::filesystem::path> AskWhereToRecord() override;
    std::optional<std::filesystem::path> AskWhatToPlay() override;
};
} // namespace corvane
