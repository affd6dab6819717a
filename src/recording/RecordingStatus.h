#pragma once

#include <cstdint>
#include <string>

namespace corvane {
class PlaybackClock;
class SessionRecorder;

/// Hours, minutes and seconds, such as "0:07:15"; what is left of the last second does not count.
std::string DurationText(std::int64_t ms);

/// What the radar shows while a session is recorded or a recording plays, a line each, in UTF-8; else empty.
std::string RecordingStatus(const SessionRecorder& recorder, PlaybackClock& playback);
} // namespace corvane
