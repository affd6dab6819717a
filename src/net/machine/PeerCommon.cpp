#include "net/machine/PeerCommon.h"

#include "net/wire/WireEncode.h"

#include <numeric>
#include <utility>

namespace corvane::directplay {
std::uint64_t PacketCounters::TotalDropped() const
{
    return std::accumulate(Dropped.begin(), Dropped.end(), std::uint64_t{0});
}

PeerCommon::PeerCommon(const PeerConfig& config, PeerOutput& output)
    : Config(config), Output(output), Random(config.Seed)
{
}

bool PeerCommon::Drop(DropReason reason)
{
    ++Counters.Dropped[static_cast<std::size_t>(reason)];
    return false;
}

Bytes PeerCommon::Encoded(const WireMessage& message) const
{
    return EncodeMessage(message, Config.StreamPort);
}

void PeerCommon::Send(const SocketAddress& machine, const WireMessage& message)
{
    Output.SendStream(machine, Encoded(message));
}

void PeerCommon::SendTo(const MachineEntry& machine, const WireMessage& message)
{
    if (!machine.Unreachable)
        Send(machine.Stream, message);
}

void PeerCommon::SendToOthers(const WireMessage& message, WireId except)
{
    for (const auto& [id, machine] : Table.Names.Machines()) {
        if (id != Table.OwnId && id != except)
            SendTo(machine, message);
    }
}

void PeerCommon::AnswerInKind(const Origin& origin, const WireMessage& message)
{
    if (origin.Connection)
        Output.SendBack(*origin.Connection, Encoded(message));
    else
        Output.SendDatagram(origin.Remote, Encoded(message));
}

void PeerCommon::Finish(Result<WireId> result)
{
    if (Request.Kind == RequestKind::None)
        return;
    if (Request.Stream)
        Output.DropStream(*Request.Stream);
    Request = {};
    Output.RequestDone(std::move(result));
}
} // namespace corvane::directplay
