// Takes VoiceSpeaker's place in a build without the speech library.

#include "app/windows/VoiceSpeaker.h"

class QTextToSpeech {}; // never made

namespace corvane {
VoiceSpeaker::VoiceSpeaker() = default;
VoiceSpeaker::~VoiceSpeaker() = default;

QString VoiceSpeaker::WhatToInstall()
{
    return tr("This build has no voices. Install qt6-speech-dev and qt6-declarative-dev, and build Corvane anew.");
}

void VoiceSpeaker::Say(const QString& /*text*/, std::uint32_t /*voice*/) {}
} // namespace corvane
