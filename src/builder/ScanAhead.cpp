#include "builder/ScanAhead.h"

#include "core/File.h"

#include <cassert>
#include <system_error>
#include <utility>

namespace corvane {
ScanAhead::ScanAhead(const BuildPlan& plan, const MagVarGrid& grid, unsigned threads) : m_grid(grid), m_cursor(plan)
{
    for (unsigned i = 0; i < threads; ++i) {
        try {
            m_threads.emplace_back([this] { Work(); });
        } catch (const std::system_error&) {
            return; // those that could be started, or the caller's thread, do the work
        }
    }
}

ScanAhead::~ScanAhead()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_changed.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
}

bool ScanAhead::MayTake() const
{
    constexpr std::size_t MostFiles = 64;
    constexpr std::size_t MostBytes = std::size_t{8} * 1024 * 1024;
    return m_slots.size() < MostFiles && m_bytesHeld < MostBytes;
}

/// Nothing after the last file. The lock must be held.
std::shared_ptr<ScanAhead::Slot> ScanAhead::TakeFile()
{
    std::optional<PlannedFile> file = m_cursor.Next();
    if (!file)
        return nullptr;
    auto slot = std::make_shared<Slot>();
    slot->Scanned.File = *std::move(file);
    m_slots.push_back(slot);
    return slot;
}

void ScanAhead::Scan(ScannedFile& scanned, BglFileLoader& loader) const
{
    const Result<BglFileLoader::Loaded> loaded = loader.Load(scanned.File.Path, LargeFile);
    if (!loaded) {
        scanned.Status = loaded.error();
        scanned.Problems.Add(0, loaded.error().Why);
    } else if (*loaded == BglFileLoader::Loaded::Whole)
        scanned.Status =
            ScanBgl(loader.Content(), m_grid, scanned.Records, FullName(scanned.File.Path), &scanned.Problems);
    else
        scanned.LeftUnread = *loaded == BglFileLoader::Loaded::TooLarge;
}

void ScanAhead::Work()
{
    BglFileLoader loader;
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_stopping || MayTake(); });
        if (m_stopping)
            return;
        const std::shared_ptr<Slot> slot = TakeFile();
        if (!slot)
            return;
        lock.unlock();
        Scan(slot->Scanned, loader);
        lock.lock();
        slot->Done = true;
        m_bytesHeld += slot->Scanned.Records.ByteCount();
        m_changed.notify_all();
    }
}

std::optional<ScannedFile> ScanAhead::Next()
{
    std::unique_lock lock(m_mutex);
    if (m_slots.empty()) {
        const std::shared_ptr<Slot> slot = TakeFile();
        if (!slot)
            return std::nullopt;
        assert(m_slots.size() == 1);
        m_slots.clear(); // nobody else works on it
        lock.unlock();
        Scan(slot->Scanned, m_ownLoader);
        return std::move(slot->Scanned);
    }
    const std::shared_ptr<Slot> slot = m_slots.front();
    m_changed.wait(lock, [&slot] { return slot->Done; });
    m_slots.pop_front();
    assert(m_bytesHeld >= slot->Scanned.Records.ByteCount());
    m_bytesHeld -= slot->Scanned.Records.ByteCount();
    m_changed.notify_all();
    return std::move(slot->Scanned);
}
} // namespace corvane
