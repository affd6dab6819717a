// Reads arbitrary bytes as a recording, and plays recordings whose records say arbitrary things under checksums that
// fit: to the program that watches them, and as a session that others join.

#include "net/memory/InMemoryNetwork.h"
#include "recording/PlaybackPeer.h"
#include "recording/ReplaySession.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace corvane {
namespace {
FileBytes ContentOf(ByteSpan bytes)
{
    FileBytes content(bytes.size());
    std::copy(bytes.begin(), bytes.end(), content.Data());
    return content;
}

/// The input as a row of records: each a byte of time, one of kind, one of member, one of length, and the payload.
Bytes FileWithRecords(ByteSpan input)
{
    Bytes file = EncodeRecordingHead({.SessionName = "Fuzz",
                                      .MaxPlayers = 8,
                                      .Flags = 68,
                                      .InstanceGuid = "{1}",
                                      .OwnPlayerId = 1,
                                      .OwnName = "**ATC"});
    std::uint32_t time = 0;
    while (input.size() >= 4) {
        time += std::uint32_t{input[0]} * 16;
        const std::size_t length = std::min<std::size_t>(input[3], input.size() - 4);
        AppendRecord(file, {time, static_cast<RecordKind>(input[1] % 6), input[2] % 8, input.subspan(4, length)});
        input = input.subspan(4 + length);
    }
    return file;
}

/// Watches a recording from a time to its end, asking what the program asks.
void Play(const std::shared_ptr<const Recording>& recording, std::int64_t beginMs)
{
    std::int64_t now = 0;
    PlaybackClock clock([&now] { return now; });
    PlaybackPeer peer([&]() -> Result<PlaybackChoice> { return PlaybackChoice{recording, beginMs}; }, clock);
    const auto sessions = peer.GetDPEnumSessions(0, EnumSessionsAvailable);
    if (!sessions || !peer.Open(sessions->front(), OpenJoin))
        std::abort();
    const auto viewer = peer.CreatePlayer("**Viewer", "Player");
    if (!viewer || *viewer < 1 || *viewer == recording->Head.OwnPlayerId)
        std::abort();
    const Bytes ask = EncodeMessage(PlainMessage{MessageType::IdentifyRequest});
    static_cast<void>(peer.Send(*viewer, AllPlayers, SendGuaranteed, ask));
    clock.SetSpeed(PlaybackClock::MaxSpeed);
    for (; now <= recording->LengthMs() / PlaybackClock::MaxSpeed + 1; now += 1 + now / 2) {
        const auto waiting = peer.GetMessageCount(*viewer);
        for (std::int32_t i = 0; waiting && i < *waiting; ++i) {
            const auto message = peer.Receive();
            if (!message || !peer.GetPlayerFriendlyName(message->From) || !DecodeMessage(message->Content))
                std::abort(); // the program would take it for the end of the session
        }
    }
}

/// Hosts a recording from a time to its end, with a guest who asks everybody who they are.
void Host(const std::shared_ptr<const Recording>& recording, std::int64_t beginMs)
{
    std::int64_t now = 0;
    PlaybackClock clock([&now] { return now; });
    clock.SetSpeed(PlaybackClock::MaxSpeed);
    InMemoryNetwork network;
    InMemoryProvider provider(network);
    const auto session = ReplaySession::Create(provider, recording, clock, {.BeginMs = beginMs});
    const auto guest = provider.DirectPlayCreate();
    if (!session || !(*guest)->InitializeConnection(InMemoryProvider::ConnectionAddress) ||
        !(*guest)->Open(network.Listing(EnumSessionsPasswordRequired).at(0), OpenJoin))
        std::abort();
    const auto id = (*guest)->CreatePlayer("**Guest", "Player");
    if (!id)
        std::abort();
    for (; now <= recording->LengthMs() / PlaybackClock::MaxSpeed + 1; now += 1 + now / 2) {
        for (const MessageType request : {MessageType::IdentifyRequest, MessageType::AircraftInfoRequest})
            static_cast<void>((*guest)->Send(*id, AllPlayers, SendGuaranteed, EncodeMessage(PlainMessage{request})));
        if (!(*session)->Advance())
            std::abort();
        const auto waiting = (*guest)->GetMessageCount(*id);
        for (std::int32_t i = 0; waiting && i < *waiting; ++i)
            static_cast<void>((*guest)->Receive());
    }
}
} // namespace
} // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const corvane::ByteSpan input(data, size);
    for (const corvane::Bytes& file : {corvane::Bytes(input.begin(), input.end()), corvane::FileWithRecords(input)}) {
        auto decoded = corvane::DecodeRecording(corvane::ContentOf(file), "fuzzed");
        if (!decoded)
            continue;
        const auto recording = std::make_shared<const corvane::Recording>(*std::move(decoded));
        for (const std::int64_t begin : {std::int64_t{0}, std::int64_t{recording->LengthMs()} / 2}) {
            corvane::Play(recording, begin);
            corvane::Host(recording, begin);
        }
    }
    return 0;
}
