#pragma once

#include "core/MessageBoxes.h"
#include "net/memory/InMemoryNetwork.h"
#include "session/ConnectionModel.h"
#include "session/MessagePump.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace corvane::test {
/// A controller's program without windows: joins the first session of the in-memory network and follows it.
class Controller final : private ConnectionView, private PumpEvents, private MessageBoxes {
public:
    explicit Controller(InMemoryNetwork& network) : m_ownFactory(std::make_unique<InMemoryProvider>(network)) {}
    /// On the first connection type that another factory's peers offer.
    explicit Controller(SessionPeerFactory& factory) : m_factory(factory) {}

    /// Locates and asks to join; admitted once a HandshakeTick finds the host's answer.
    void Ask(std::string password = {})
    {
        Password = std::move(password);
        m_connection.Load();
        m_connection.ConnectionTypeChosen(0);
        m_connection.LocateSession();
        m_connection.JoinSession(0, DefaultNickname);
    }
    bool HandshakeTick()
    {
        m_connection.HandshakeTick();
        if (Session.SessionJoined && !m_started) {
            m_started = true;
            m_pump.Start();
        }
        return Session.SessionJoined;
    }
    void PumpTick() { m_pump.PumpTick(); }
    void UpkeepTick() { m_pump.UpkeepTick(); }
    void Say(std::string_view text)
    {
        ASSERT_TRUE(SendFromOwnPlayer(Session, AllPlayers, EncodeMessage(ChatTextMessage{std::string(text)})));
    }

    [[nodiscard]] const PlayerRecord* Find(std::string_view name) const
    {
        for (const PlayerRecord& player : Players.Players())
            if (player.Name == name)
                return &player;
        return nullptr;
    }
    [[nodiscard]] std::vector<SessionMember> Members() const
    {
        auto members = Session.SessionPeer->GetDPEnumPlayers();
        return members ? *std::move(members) : std::vector<SessionMember>{};
    }

    SessionState Session;
    PlayerTable Players;
    std::vector<std::string> Chat; ///< "name: text"
    std::vector<std::string> Boxes;
    std::string Password;
    bool Disconnected = false;

private:
    void SetConnections(std::span<const ConnectionEntry> /*connections*/) override {}
    void SetSessions(std::span<const std::string> /*lines*/) override {}
    void SetStatus(std::string_view /*status*/) override {}
    void SetListsEnabled(bool /*enabled*/) override {}
    void SetTimers(bool /*running*/) override {}
    void OpenRadar() override {}
    void EndProgram() override {}

    void RefreshPlayerList() override {}
    void AddChatLine(std::string_view from, std::string_view text) override
    {
        Chat.push_back(std::string(from) + ": " + std::string(text));
    }
    void Disconnect() override { Disconnected = true; }

    void Show(MessageIcon /*icon*/, std::string_view /*title*/, std::string_view text) override
    {
        Boxes.emplace_back(text);
    }
    bool Confirm(std::string_view /*title*/, std::string_view /*text*/) override { return true; }
    std::optional<std::string> AskText(std::string_view /*title*/, std::string_view /*prompt*/) override
    {
        return Password;
    }

    std::unique_ptr<InMemoryProvider> m_ownFactory;
    SessionPeerFactory& m_factory = *m_ownFactory;
    std::unique_ptr<MagVarGrid> m_grid = std::make_unique<MagVarGrid>();
    ConnectionModel m_connection{m_factory, Session, Players, *this, *this};
    MessagePump m_pump{Session, Players, *m_grid, *this, *this};
    bool m_started = false;
};
} // namespace corvane::test
