#include "app/PracticeProvider.h"

namespace corvane {
void PracticeProvider::ServeAt(std::string_view address)
{
    m_onNetwork = !address.empty();
    m_network.ServeAt(address);
}

Result<std::unique_ptr<SessionPeer>> PracticeProvider::DirectPlayCreate()
{
    return m_onNetwork ? m_network.DirectPlayCreate() : m_memory.DirectPlayCreate();
}
} // namespace corvane
