#pragma once

#include "core/MessageBoxes.h"
#include "recording/PlaybackPeer.h"
#include "recording/RecordingDialogs.h"
#include "session/ConnectionProvider.h"

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

private:
    Result<std::shared_ptr<const Recording>> Choose();

    PlaybackClock& m_clock;
    RecordingDialogs& m_dialogs;
    MessageBoxes& m_boxes;
};
} // namespace corvane
