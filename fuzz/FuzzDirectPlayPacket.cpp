#include "net/wire/StreamFramer.h"
#include "net/wire/WireEncode.h"

#include <cstdlib>

using namespace corvane;
using namespace corvane::directplay;

/// What has been read must be written and read again as the same value.
static void CheckRoundTrip(const WireMessage& message)
{
    const Bytes encoded = EncodeMessage(message, 2300);
    if (encoded.empty() || encoded.size() > MaxMessageSize)
        return;
    const auto again = DecodeManagement(ByteSpan(encoded).subspan(PrefixSize));
    // A login's refusal is read only, and left out when written.
    const auto* reply = std::get_if<RequestPlayerReply>(&message);
    if (reply != nullptr && reply->NeedsLogin)
        return;
    if (!std::holds_alternative<Management>(again) || !(std::get<Management>(again).Body == message))
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ByteSpan input(data, size);
    if (const auto bare = DecodeManagement(input); std::holds_alternative<Management>(bare))
        CheckRoundTrip(std::get<Management>(bare).Body);
    (void)DecodePrefix(input);
    (void)DecodePlayerMessage(UnwrapPlayerMessage(input), true);
    StreamFramer framer;
    const std::size_t half = size / 2;
    const auto onMessage = [](ByteSpan message) { (void)DecodePrefix(message); };
    if (!framer.Feed(input.first(half), onMessage))
        (void)framer.Feed(input.subspan(half), onMessage);
    return 0;
}
