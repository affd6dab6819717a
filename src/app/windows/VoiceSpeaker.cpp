#include "app/windows/VoiceSpeaker.h"

#include <QLocale>
#include <QTextToSpeech>
#include <QVoice>

namespace corvane {
VoiceSpeaker::VoiceSpeaker()
{
    QStringList engines = QTextToSpeech::availableEngines();
    engines.removeAll(QStringLiteral("mock")); // says nothing
    if (engines.isEmpty())
        return;
    m_speech = std::make_unique<QTextToSpeech>(engines.front());
    const QLocale english(QLocale::English, QLocale::UnitedStates); // pilots speak it whatever the desktop does
    if (m_speech->availableLocales().contains(english))
        m_speech->setLocale(english);
    connect(m_speech.get(), &QTextToSpeech::stateChanged, this, [this](QTextToSpeech::State state) {
        if (state == QTextToSpeech::Ready || state == QTextToSpeech::Error)
            emit Ended();
    });
}

VoiceSpeaker::~VoiceSpeaker() = default;

QString VoiceSpeaker::WhatToInstall()
{
    return tr("There is no speech engine. Install the package qt6-speech-flite-plugin, or qt6-speech-speechd-plugin "
              "with speech-dispatcher, and start Corvane anew.");
}

void VoiceSpeaker::Say(const QString& text, std::uint32_t voice)
{
    if (!m_speech)
        return;
    constexpr std::uint32_t Pitches = 5;
    constexpr double PitchStep = 0.12;
    constexpr double RadioRate = 0.1; // a little faster than people are read to
    const QList<QVoice> voices = m_speech->availableVoices();
    if (!voices.isEmpty())
        m_speech->setVoice(voices[static_cast<qsizetype>(voice / Pitches % static_cast<std::uint32_t>(voices.size()))]);
    m_speech->setPitch((static_cast<double>(voice % Pitches) - (Pitches - 1) / 2.0) * PitchStep);
    m_speech->setRate(RadioRate);
    m_speech->say(text);
}
} // namespace corvane
