#pragma once

#include "core/Bytes.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace corvane {
/// Reads fields at any offset of a scenery file (BGL) held in memory; all numbers are little-endian.
///
/// The simulator's own reader holds one byte more than the file, which is 0, and so does this one. A number that starts
/// past that byte reads as 0. A number that starts at it or before and reaches over it, a negative offset, and a text
/// that needs bytes beyond it are index errors: they give 0 or an empty text and set Failed(), which stays set until
/// ClearFailure(). Decoders ask it before they store a field.
class BglReader {
public:
    explicit BglReader(ByteSpan file) noexcept : m_file(file) {}

    /// Bytes of the file.
    [[nodiscard]] std::int64_t Size() const noexcept { return static_cast<std::int64_t>(m_file.size()); }
    /// Where reading ends: behind the byte more than the file.
    [[nodiscard]] std::int64_t End() const noexcept { return Size() + 1; }
    [[nodiscard]] bool Failed() const noexcept { return m_failed; }
    void ClearFailure() noexcept { m_failed = false; }

    std::uint8_t ReadU8(std::int64_t offset) noexcept { return static_cast<std::uint8_t>(ReadUnsigned(offset, 1)); }
    std::int16_t ReadI16(std::int64_t offset) noexcept { return static_cast<std::int16_t>(ReadUnsigned(offset, 2)); }
    std::int32_t ReadI24(std::int64_t offset) noexcept;
    std::int32_t ReadI32(std::int64_t offset) noexcept { return static_cast<std::int32_t>(ReadUnsigned(offset, 4)); }
    /// An IEEE-754 single-precision number; not-a-number and infinite patterns are handed on as they are.
    float ReadF32(std::int64_t offset) noexcept;

    /// The bytes from offset that are not 0, each as one 8-bit character; zero bytes are skipped and do not end the
    /// text. A length of 0 or less gives an empty text, whatever the offset.
    std::string ReadText(std::int64_t offset, std::int64_t length);
    /// ReadText over a navaid field of length characters and its terminator.
    std::string ReadNavText(std::int64_t offset, std::int64_t length) { return ReadText(offset, length + 1); }

private:
    std::uint32_t ReadUnsigned(std::int64_t offset, std::int64_t count) noexcept
    {
        if (offset >= End())
            return 0;
        if (offset < 0 || offset + count > End()) {
            m_failed = true;
            return 0;
        }
        const std::int64_t inFile = std::min(count, Size() - offset);
        std::uint32_t value = 0;
        for (std::int64_t i = 0; i < inFile; ++i)
            value |= std::uint32_t{m_file[static_cast<std::size_t>(offset + i)]} << (8 * i);
        return value;
    }

    ByteSpan m_file;
    bool m_failed = false;
};
} // namespace corvane
