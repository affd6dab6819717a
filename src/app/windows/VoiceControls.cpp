#include "app/windows/VoiceControls.h"

#include "app/AppState.h"
#include "app/windows/VoiceSpeaker.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "session/windows/ChatWindow.h"

#include <QAction>

#include <algorithm>

namespace corvane {
VoiceControls::VoiceControls(const AppState& state, const ChatWindow& chat, DeskSettings& desk, QAction& entry,
                             MessageBoxes& boxes)
    : m_state(state), m_desk(desk), m_entry(entry), m_boxes(boxes)
{
    constexpr int LookMs = 1000;
    m_timer.setInterval(LookMs);
    connect(&m_timer, &QTimer::timeout, this, &VoiceControls::SayNext);
    connect(&chat, &ChatWindow::LineAdded, this, &VoiceControls::Hear);
    m_entry.setChecked(m_desk.Flag(Key, false) && MakeSpeaker()); // nobody is told at every start
    connect(&m_entry, &QAction::triggered, this, &VoiceControls::Switch);
}

VoiceControls::~VoiceControls() = default;

bool VoiceControls::MakeSpeaker()
{
    m_speaker = std::make_unique<VoiceSpeaker>();
    if (!m_speaker->CanSpeak()) {
        m_speaker.reset();
        return false;
    }
    connect(m_speaker.get(), &VoiceSpeaker::Ended, this, [this] {
        m_queue.Ended();
        QTimer::singleShot(0, this, &VoiceControls::SayNext); // the engine is still telling of the end
    });
    m_timer.start();
    return true;
}

void VoiceControls::Switch(bool on)
{
    const bool speaks = on && MakeSpeaker();
    m_desk.Keep(Key, speaks);
    m_entry.setChecked(speaks);
    if (speaks)
        return;
    m_timer.stop();
    m_queue.Clear();
    m_speaker.reset();
    if (on)
        m_boxes.Inform(ToText(VoiceSpeaker::WhatToInstall()));
}

void VoiceControls::Hear(std::string_view from, std::string_view text)
{
    if (!m_speaker)
        return;
    const auto players = m_state.Players.Players();
    const bool isPilot = std::any_of(players.begin(), players.end(), [&](const PlayerRecord& player) {
        return player.Name == from && player.Role == PilotRole && player.PlayerId != m_state.Session.OwnPlayerId;
    });
    if (!isPilot)
        return;
    m_queue.Add(from, text, m_clock());
    SayNext();
}

void VoiceControls::SayNext()
{
    if (!m_speaker)
        return;
    if (const auto line = m_queue.Next(m_clock()))
        m_speaker->Say(ToQString(line->Text), line->Voice);
}
} // namespace corvane
