#include "app/windows/TonePlayer.h"

#include "session/AttentionTones.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QMediaDevices>

namespace corvane {
TonePlayer::TonePlayer() = default;
TonePlayer::~TonePlayer() = default;

void TonePlayer::Play(AttentionSign sign)
{
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull())
        return;
    QAudioFormat format;
    format.setSampleRate(ToneSamplesPerSecond);
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Int16);
    m_sink.reset(); // before its samples go
    const std::vector<std::int16_t> tone = AttentionTone(sign);
    m_samples.close();
    m_samples.setData(reinterpret_cast<const char*>(tone.data()), static_cast<int>(tone.size() * sizeof(tone.front())));
    m_samples.open(QIODevice::ReadOnly);
    m_sink = std::make_unique<QAudioSink>(device, format);
    m_sink->start(&m_samples);
}
} // namespace corvane
