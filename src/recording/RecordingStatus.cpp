#include "recording/RecordingStatus.h"

#include "core/NumberText.h"
#include "recording/PlaybackClock.h"
#include "recording/SessionRecorder.h"

namespace corvane {
static std::string TwoDigits(std::int64_t value)
{
    return (value < 10 ? "0" : "") + NumberText(value);
}

std::string DurationText(std::int64_t ms)
{
    const std::int64_t seconds = ms / 1000;
    return NumberText(seconds / 3600) + ":" + TwoDigits(seconds / 60 % 60) + ":" + TwoDigits(seconds % 60);
}

static std::string PlaybackStatus(PlaybackClock& playback)
{
    const std::int64_t position = playback.PositionMs();
    const std::string where = DurationText(position) + " of " + DurationText(playback.LengthMs());
    if (position >= playback.LengthMs())
        return "End of the recording, " + where;
    const std::string speed = "at " + NumberText(playback.Speed()) + "x, ";
    return (playback.IsPaused() ? "Paused " : "Playing ") + speed + where;
}

std::string RecordingStatus(const SessionRecorder& recorder, PlaybackClock& playback)
{
    std::string status;
    if (recorder.IsRecording())
        status = "Recording to " + recorder.File().filename().string() + ", " + DurationText(recorder.ElapsedMs());
    if (playback.IsOpen())
        status += (status.empty() ? "" : "\n") + PlaybackStatus(playback);
    return status;
}
} // namespace corvane
