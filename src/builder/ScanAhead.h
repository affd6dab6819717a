#pragma once

#include "builder/BglScanner.h"
#include "builder/BuildPlan.h"
#include "builder/EncodedRecords.h"
#include "core/MagVarGrid.h"
#include "core/Result.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace corvane {
/// One scanned scenery file.
struct ScannedFile {
    PlannedFile File;
    Result<void> Status;
    EncodedRecords Records;
    ScanProblems Problems;
    bool LeftUnread = false; ///< too large to be decoded ahead: to be scanned straight into the database
};

/// Reads and decodes the files of a plan on threads of its own, ahead of the one who asks for them in order.
///
/// What is held ahead is bounded in files and bytes; files of more than LargeFile bytes are left to the caller, so that
/// memory does not grow with them. Without a second processor, or where no thread can be had, files are scanned as they
/// are asked for. The results do not depend on any of this. The plan and the grid must outlive the object.
class ScanAhead {
public:
    static constexpr std::size_t LargeFile = std::size_t{2} * 1024 * 1024;

    /// threads  at most so many; 0 scans on the caller's thread
    ScanAhead(const BuildPlan& plan, const MagVarGrid& grid, unsigned threads);
    ScanAhead(const ScanAhead&) = delete;
    ScanAhead(ScanAhead&&) = delete;
    ScanAhead& operator=(const ScanAhead&) = delete;
    ScanAhead& operator=(ScanAhead&&) = delete;
    /// Stops the threads after the file that each is scanning.
    ~ScanAhead();

    /// The next file of the plan; nothing after the last.
    std::optional<ScannedFile> Next();

private:
    struct Slot {
        ScannedFile Scanned;
        bool Done = false;
    };

    void Work();
    [[nodiscard]] bool MayTake() const;
    std::shared_ptr<Slot> TakeFile();
    void Scan(ScannedFile& scanned, BglFileLoader& loader) const;

    const MagVarGrid& m_grid;
    std::mutex m_mutex; ///< guards what follows, up to the threads
    std::condition_variable m_changed;
    BuildPlan::Cursor m_cursor;
    std::deque<std::shared_ptr<Slot>> m_slots; ///< taken and not yet handed out, in plan order
    std::size_t m_bytesHeld = 0;
    bool m_stopping = false;
    std::vector<std::thread> m_threads;
    BglFileLoader m_ownLoader; ///< of the caller's thread
};
} // namespace corvane
