#pragma once

#include "core/MessageBoxes.h"
#include "core/MillisecondClock.h"
#include "practice/VoiceQueue.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <string_view>

class QAction;

namespace corvane {
class ChatWindow;
class DeskSettings;
class VoiceSpeaker;
struct AppState;

/// Speaks what pilots say in chat, where the user wants that.
class VoiceControls final : public QObject {
    Q_OBJECT

public:
    static constexpr const char* Key = "voices/on"; ///< of the desk

    /// entry  the switch in the radar's menu
    VoiceControls(const AppState& state, const ChatWindow& chat, DeskSettings& desk, QAction& entry,
                  MessageBoxes& boxes);
    ~VoiceControls() override;

private:
    bool MakeSpeaker();
    void Switch(bool on);
    void Hear(std::string_view from, std::string_view text);
    void SayNext();

    const AppState& m_state;
    DeskSettings& m_desk;
    QAction& m_entry;
    MessageBoxes& m_boxes;
    MillisecondClock m_clock = SteadyMilliseconds();
    VoiceQueue m_queue;
    QTimer m_timer;                          ///< for a voice that never reports its end
    std::unique_ptr<VoiceSpeaker> m_speaker; ///< null while off
};
} // namespace corvane
