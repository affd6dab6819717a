#pragma once

#include "app/ServedNetwork.h"
#include "net/memory/InMemoryNetwork.h"
#include "practice/PracticeTransport.h"

namespace corvane {
/// The connection type of the practice session, which is kept in memory unless it is served on the network.
class PracticeProvider final : public PracticeTransport {
public:
    /// options  of peers on the network; their addresses follow from ServeAt
    explicit PracticeProvider(InMemoryNetwork& network, DirectPlayOptions options = {})
        : m_memory(network), m_network(std::move(options))
    {
    }

    [[nodiscard]] std::string Name() const override { return m_memory.Name(); }
    [[nodiscard]] std::string Address() const override { return m_memory.Address(); }
    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override;
    void ServeAt(std::string_view address) override;
    [[nodiscard]] bool OnNetwork() const override { return m_onNetwork; }

private:
    InMemoryProvider m_memory;
    ServedNetwork m_network;
    bool m_onNetwork = false;
};
} // namespace corvane
