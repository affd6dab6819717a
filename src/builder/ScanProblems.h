#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
/// Something that a scenery file has wrong: it cost a record a part, or the rest of the file.
struct ScanProblem {
    std::int64_t Offset = 0; ///< in bytes from the file's start, of the record concerned
    std::string Why;         ///< one clause
};

/// How many problems one file has, and the first of them.
struct ScanProblems {
    static constexpr std::size_t Kept = 100;

    void Add(std::int64_t offset, std::string why)
    {
        ++Count;
        if (First.size() < Kept)
            First.push_back({offset, std::move(why)});
    }

    std::int64_t Count = 0;
    std::vector<ScanProblem> First;
};
} // namespace corvane
