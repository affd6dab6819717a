#include "session/AttentionTones.h"

#include "core/Geodesy.h"
#include "core/Rounding.h"

#include <cmath>
#include <span>

namespace corvane {
namespace {
struct Note {
    double Hertz; ///< 0 is a rest
    double Seconds;
};
} // namespace

static std::span<const Note> NotesOf(AttentionSign sign)
{
    static constexpr Note Alert[] = {{880, 0.12}, {0, 0.05}, {880, 0.12}};
    static constexpr Note Silence[] = {{220, 0.4}};
    static constexpr Note Chat[] = {{1047, 0.06}, {1319, 0.08}};
    static constexpr Note Join[] = {{523, 0.08}, {659, 0.08}, {784, 0.1}};
    static constexpr Note Leave[] = {{784, 0.08}, {659, 0.08}, {523, 0.1}};
    switch (sign) {
    case AttentionSign::Alert: return Alert;
    case AttentionSign::Silence: return Silence;
    case AttentionSign::Chat: return Chat;
    case AttentionSign::Join: return Join;
    case AttentionSign::Leave: return Leave;
    }
    return {};
}

/// A sine that swells and fades along half a wave, so that nothing clicks.
static void AppendNote(std::vector<std::int16_t>& samples, const Note& note)
{
    constexpr double Loudest = 9000; // of 32767
    const auto count = RoundTo<std::int32_t>(note.Seconds * ToneSamplesPerSecond);
    for (std::int32_t i = 0; i < count; ++i) {
        const double swell = std::sin(GeoPi * i / count);
        const double wave = std::sin(2 * GeoPi * note.Hertz * i / ToneSamplesPerSecond);
        samples.push_back(RoundTo<std::int16_t>(Loudest * swell * wave));
    }
}

std::vector<std::int16_t> AttentionTone(AttentionSign sign)
{
    std::vector<std::int16_t> samples;
    for (const Note& note : NotesOf(sign))
        AppendNote(samples, note);
    samples.push_back(0);
    return samples;
}
} // namespace corvane
