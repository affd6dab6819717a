#pragma once

#include "core/ByteSource.h"
#include "core/Bytes.h"
#include "core/Result.h"

#include <cstdint>
#include <memory>

namespace corvane {
class Inflater;

/// The bytes of a file one piece after another; those of a gzip file (known by its first two bytes) unpacked.
///
/// A gzip file may have several members, which count as one; what follows its last member is ignored. At most
/// MostUnpackedBytes are given, so that a small file cannot ask for endless work.
class UnpackedBytes {
public:
    static constexpr std::uint64_t MostUnpackedBytes = std::uint64_t{4} * 1024 * 1024 * 1024;

    explicit UnpackedBytes(std::unique_ptr<ByteSource> source);
    UnpackedBytes(const UnpackedBytes&) = delete;
    UnpackedBytes& operator=(const UnpackedBytes&) = delete;
    UnpackedBytes(UnpackedBytes&&) = delete;
    UnpackedBytes& operator=(UnpackedBytes&&) = delete;
    ~UnpackedBytes();

    [[nodiscard]] const std::string& Name() const noexcept { return m_source->Name(); }
    /// How much of the file has been read, 0 .. 1.
    [[nodiscard]] double PartDone() const noexcept;
    /// The next bytes, valid until the next call; none at the end. An Error names the file: it cannot be read, its gzip
    /// data are damaged or cut off, or unpack to too much.
    Result<ByteSpan> Next();

private:
    Result<ByteSpan> NextRaw();
    Result<ByteSpan> NextUnpacked();

    std::unique_ptr<ByteSource> m_source;
    std::uint64_t m_offset = 0;
    std::uint64_t m_given = 0;
    std::unique_ptr<Inflater> m_inflater; ///< of a gzip file
    bool m_begun = false;
};
} // namespace corvane
