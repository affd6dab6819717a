#include "recording/RecordedSessionProvider.h"

namespace corvane {
Result<std::unique_ptr<SessionPeer>> RecordedSessionProvider::DirectPlayCreate()
{
    return std::unique_ptr<SessionPeer>(std::make_unique<PlaybackPeer>([this] { return Choose(); }, m_clock));
}

Result<PlaybackChoice> RecordedSessionProvider::Choose()
{
    std::optional<Next> next = std::exchange(m_next, std::nullopt);
    if (!next)
        if (auto file = m_dialogs.AskWhatToPlay())
            next = Next{*std::move(file)};
    if (!next)
        return Fail("GetDPEnumSessions", "no recording was chosen");
    auto recording = ReadRecording(next->File);
    if (!recording) {
        m_boxes.Warn(BoxText(recording.error()));
        return recording.error();
    }
    if (recording->LeftOut)
        m_boxes.Inform(BoxText(*recording->LeftOut));
    return PlaybackChoice{std::make_shared<const Recording>(*std::move(recording)), next->AtMs};
}
} // namespace corvane
