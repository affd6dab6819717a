#include "traffic/feeds/BaseStationSource.h"

#include "traffic/feeds/BaseStationText.h"

namespace corvane {
void BaseStationSource::Receive(ByteSpan bytes, std::int64_t nowMs)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    m_cutter.Feed(text, [this, nowMs](std::string_view line) {
        const auto report = DecodeBaseStationLine(line);
        if (!report)
            return;
        ++m_linesRead;
        m_table.Apply(*report, {.HeardMs = nowMs, .PositionMs = nowMs, .LastWordMs = nowMs});
    });
}

void BaseStationSource::Restart(std::int64_t /*nowMs*/)
{
    m_cutter.Reset();
}
} // namespace corvane
