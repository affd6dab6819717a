#include "recording/RecordedSessionProvider.h"

namespace corvane {
Result<std::unique_ptr<SessionPeer>> RecordedSessionProvider::DirectPlayCreate()
{
    return std::unique_ptr<SessionPeer>(std::make_unique<PlaybackPeer>([this] { return Choose(); }, m_clock));
}

Result<std::shared_ptr<const Recording>> RecordedSessionProvider::Choose()
{
    const auto file = m_dialogs.AskWhatToPlay();
    if (!file)
        return Fail("GetDPEnumSessions", "no recording was chosen");
    auto recording = ReadRecording(*file);
    if (!recording) {
        m_boxes.Warn(BoxText(recording.error()));
        return recording.error();
    }
    if (recording->LeftOut)
        m_boxes.Inform(BoxText(*recording->LeftOut));
    return std::make_shared<const Recording>(*std::move(recording));
}
} // namespace corvane
