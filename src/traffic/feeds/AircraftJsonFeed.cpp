#include "traffic/feeds/AircraftJsonFeed.h"

#include "core/File.h"
#include "core/Text.h"
#include "traffic/feeds/BackOff.h"
#include "traffic/feeds/WebFetch.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <iterator>
#include <mutex>
#include <thread>
#include <utility>

namespace corvane {
/// Reads and decodes the file again and again. What it hands over is the newest file alone, however long nobody looks.
class AircraftJsonFeed::Reading {
public:
    explicit Reading(FeedPlace place) : m_place(std::move(place)) {}

    /// The thread's work, until Stop.
    void Run();
    void Stop();
    /// The newest file since the last time.
    std::optional<Result<AircraftJson>> Take()
    {
        const std::scoped_lock lock(m_mutex);
        return std::exchange(m_newest, std::nullopt);
    }

private:
    [[nodiscard]] Result<AircraftJson> ReadOnce() const;
    [[nodiscard]] Result<AircraftJson> ReadFile() const;

    FeedPlace m_place;
    std::atomic<bool> m_stop = false;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::optional<Result<AircraftJson>> m_newest;
};

Result<AircraftJson> AircraftJsonFeed::Reading::ReadFile() const
{
    const std::filesystem::path path(std::u8string(m_place.Path.begin(), m_place.Path.end()));
    std::error_code ignored;
    if (const auto size = std::filesystem::file_size(path, ignored); !ignored && size > AircraftJson::LargestFile)
        return Fail(m_place.Path, "has " + std::to_string(size) + " bytes, which is too many");
    auto content = ReadWholeFile(path);
    if (!content)
        return content.error();
    const ByteSpan bytes = content->Span();
    return DecodeAircraftJson(std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()), m_place.Path);
}

Result<AircraftJson> AircraftJsonFeed::Reading::ReadOnce() const
{
    if (m_place.Kind == FeedKind::JsonFile)
        return ReadFile();
    auto page = FetchWebPage({m_place.Host, m_place.Port, m_place.Path, m_place.LocalAddress},
                             AircraftJson::LargestFile, m_stop);
    if (!page)
        return page.error();
    return DecodeAircraftJson(*std::move(page), FeedPlaceText(m_place));
}

void AircraftJsonFeed::Reading::Run()
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds Often(500); // producers replace the file about once a second
    BackOff backOff;
    const auto start = Clock::now();
    const auto now = [start] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
    };
    while (!m_stop) {
        auto read = ReadOnce();
        const bool sound = read.has_value();
        sound ? backOff.Opened(now()) : backOff.Failed(now());
        const auto pause = sound ? Often : std::chrono::milliseconds(backOff.NextTryMs() - now());
        std::unique_lock lock(m_mutex);
        m_newest = std::move(read);
        m_wake.wait_for(lock, pause, [this] { return m_stop.load(); });
    }
}

void AircraftJsonFeed::Reading::Stop()
{
    const std::scoped_lock lock(m_mutex);
    m_stop = true;
    m_wake.notify_all();
}

/// The thread may be waiting for a name service or a dead file server for longer than anybody wants to: nobody waits
/// for its end.
AircraftJsonFeed::AircraftJsonFeed(const FeedPlace& place)
    : m_reading(std::make_shared<Reading>(place)), m_report(Utf8ToWindows1252(FeedPlaceText(place)))
{
    std::thread([reading = m_reading] { reading->Run(); }).detach();
}

AircraftJsonFeed::~AircraftJsonFeed()
{
    m_reading->Stop();
}

TrafficEvents AircraftJsonFeed::Take(std::int64_t nowMs)
{
    TrafficEvents events;
    m_report.Now(nowMs);
    if (const auto file = m_reading->Take())
        Judge(*file, nowMs, events);
    m_source.Advance(nowMs);
    TrafficEvents told = m_source.TakeEvents();
    events.insert(events.end(), std::move_iterator(told.begin()), std::move_iterator(told.end()));
    return events;
}

void AircraftJsonFeed::Judge(const Result<AircraftJson>& file, std::int64_t nowMs, TrafficEvents& events)
{
    constexpr std::int64_t TooLongMs = 60000;
    constexpr int Tolerated = 2; // a file that is being copied is half there now and then
    if (!file) {
        if (++m_failures > Tolerated || !m_source.LastNewsMs())
            m_report.Failed(file.error().Why, events);
        return;
    }
    m_failures = 0;
    m_report.Opened(events);
    m_source.Apply(*file, nowMs);
    const bool standsStill = nowMs - m_source.LastNewsMs().value_or(nowMs) >= TooLongMs;
    if (m_source.LastNewsMs() == nowMs)
        m_report.Heard();
    if (standsStill != std::exchange(m_stoodStill, standsStill))
        events.emplace_back(SourceNotice{
            m_report.Place() + (standsStill ? " has not been renewed for a minute" : " is being renewed again")});
}

std::string AircraftJsonFeed::Health() const
{
    return m_report.Health(m_source.Table().Count());
}
} // namespace corvane
