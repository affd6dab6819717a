#pragma once

#include <QObject>
#include <QString>

#include <cstdint>
#include <memory>

class QTextToSpeech;

namespace corvane {
/// Says lines with the voices of the desktop's speech engine, where one is installed and this build has the library
/// for it.
class VoiceSpeaker final : public QObject {
    Q_OBJECT

public:
    VoiceSpeaker();
    VoiceSpeaker(const VoiceSpeaker&) = delete;
    VoiceSpeaker& operator=(const VoiceSpeaker&) = delete;
    VoiceSpeaker(VoiceSpeaker&&) = delete;
    VoiceSpeaker& operator=(VoiceSpeaker&&) = delete;
    ~VoiceSpeaker() override;

    [[nodiscard]] bool CanSpeak() const { return m_speech != nullptr; }
    /// What to do where it cannot.
    static QString WhatToInstall();
    /// voice  any number; the same sounds the same
    void Say(const QString& text, std::uint32_t voice);

signals:
    /// A line has ended, whether it was heard or not.
    void Ended();

private:
    std::unique_ptr<QTextToSpeech> m_speech; ///< null where it cannot speak
};
} // namespace corvane
