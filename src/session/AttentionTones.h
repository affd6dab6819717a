#pragma once

#include "session/AttentionSigns.h"

#include <cstdint>
#include <vector>

namespace corvane {
inline constexpr std::int32_t ToneSamplesPerSecond = 44100;

/// The sound of a sign: 16-bit samples of one channel, half a second at most, that begin and end at rest. Each sign has
/// its own row of pitches: rising for a chat line and who comes, falling for who goes, twice the same for an alert, one
/// low one for silence.
std::vector<std::int16_t> AttentionTone(AttentionSign sign);
} // namespace corvane
