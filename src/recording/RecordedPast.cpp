#include "recording/RecordedPast.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

namespace corvane {
std::size_t FirstAt(std::span<const RecordView> records, std::int64_t timeMs) noexcept
{
    const auto first = std::partition_point(records.begin(), records.end(),
                                            [timeMs](const RecordView& record) { return record.TimeMs < timeMs; });
    return static_cast<std::size_t>(first - records.begin());
}

std::vector<std::size_t> PassOver(std::span<const RecordView> records, std::int64_t timeMs, RecordedMembers& members)
{
    constexpr auto AnyKind = std::numeric_limits<std::int32_t>::min();
    std::map<std::pair<PlayerId, std::int32_t>, std::size_t> last; // by member and kind of message
    std::vector<std::size_t> kept;
    const std::size_t end = FirstAt(records, timeMs);
    for (std::size_t i = 0; i < end; ++i) {
        const RecordView& record = records[i];
        members.Apply(record);
        const auto header = DecodeHeader(record.Payload);
        if (record.Kind == RecordKind::MemberLeft)
            last.erase(last.lower_bound({record.Member, AnyKind}),
                       record.Member == std::numeric_limits<PlayerId>::max()
                           ? last.end()
                           : last.lower_bound({record.Member + 1, AnyKind}));
        else if (record.Kind == RecordKind::MemberSpoke && header && header->Type == MessageType::ChatText)
            kept.push_back(i);
        else if (record.Kind == RecordKind::MemberSpoke && header)
            last[{record.Member, static_cast<std::int32_t>(header->Type)}] = i;
    }
    for (const auto& [of, index] : last)
        kept.push_back(index);
    std::sort(kept.begin(), kept.end());
    return kept;
}
} // namespace corvane
