#include "traffic/feeds/BaseStationFeed.h"

#include "core/Text.h"

#include <iterator>
#include <utility>

namespace corvane {
BaseStationFeed::BaseStationFeed(const FeedPlace& place)
    : m_stream(place.Host, place.Port, place.LocalAddress), m_report(Utf8ToWindows1252(FeedPlaceText(place)))
{
}

TrafficEvents BaseStationFeed::Take(std::int64_t nowMs)
{
    TrafficEvents events;
    m_report.Now(nowMs);
    const std::uint64_t before = m_source.LinesRead();
    m_stream.Poll(nowMs, {.OnOpened =
                              [&] {
                                  m_source.Restart(nowMs);
                                  m_report.Opened(events);
                              },
                          .OnBytes = [&](ByteSpan bytes) { m_source.Receive(bytes, nowMs); },
                          .OnFailed = [&](const std::string& why) { m_report.Failed(why, events); }});
    if (m_source.LinesRead() != before)
        m_report.Heard();
    m_source.Advance(nowMs);
    TrafficEvents told = m_source.TakeEvents();
    events.insert(events.end(), std::move_iterator(told.begin()), std::move_iterator(told.end()));
    return events;
}

std::string BaseStationFeed::Health() const
{
    return m_report.Health(m_source.Table().Count());
}
} // namespace corvane
