#pragma once

#include "session/AttentionSigns.h"

#include <QBuffer>

#include <memory>

class QAudioSink;

namespace corvane {
/// Plays the tones of signs. Where there is no audio device it is silent; one that comes later is used.
class TonePlayer {
public:
    TonePlayer();
    TonePlayer(const TonePlayer&) = delete;
    TonePlayer& operator=(const TonePlayer&) = delete;
    TonePlayer(TonePlayer&&) = delete;
    TonePlayer& operator=(TonePlayer&&) = delete;
    ~TonePlayer();

    /// Begins the tone and breaks off the one before.
    void Play(AttentionSign sign);

private:
    QBuffer m_samples;
    std::unique_ptr<QAudioSink> m_sink;
};
} // namespace corvane
