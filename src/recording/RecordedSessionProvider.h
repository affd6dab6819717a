#pragma once

#include "core/MessageBoxes.h"
#include "recording/PlaybackPeer.h"
#include "recording/RecordingDialogs.h"
#include "session/ConnectionProvider.h"

#include <filesystem>
#include <optional>
#include <utility>

namespace corvane {
/// Offers recorded sessions as a connection type. Looking for sessions asks for a recording and lists the session that
/// is in it; what is wrong with the file is shown. The clock, the dialogs and the boxes must outlive the peers made, as
/// the provider itself must.
class RecordedSessionProvider final : public ConnectionProvider {
public:
    RecordedSessionProvider(PlaybackClock& clock, RecordingDialogs& dialogs, MessageBoxes& boxes) noexcept
        : m_clock(clock), m_dialogs(dialogs), m_boxes(boxes)
    {
    }

    [[nodiscard]] std::string Name() const override { return std::string(PlaybackConnectionName); }
    [[nodiscard]] std::string Address() const override { return std::string(PlaybackConnectionAddress); }
    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override;

    /// Answers the next question for a recording, instead of the user.
    /// atMs  where playing begins
    void PlayNext(std::filesystem::path file, std::int64_t atMs) { m_next = {std::move(file), atMs}; }
    /// The user answers it after all.
    void AskUser() noexcept { m_next.reset(); }

private:
    struct Next {
        std::filesystem::path File;
        std::int64_t AtMs = 0;
    };
    Result<PlaybackChoice> Choose();

    PlaybackClock& m_clock;
    RecordingDialogs& m_dialogs;
    MessageBoxes& m_boxes;
    std::optional<Next> m_next;
};
} // namespace corvane
