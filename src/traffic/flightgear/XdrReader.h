#pragma once

#include "core/Bytes.h"

#include <bit>
#include <cstdint>

namespace corvane::flightgear {
/// Reads big-endian fields one after another from borrowed bytes. A read beyond the end gives 0 and makes the reader
/// fail; every later read then gives 0 too.
class XdrReader {
public:
    explicit XdrReader(ByteSpan bytes) noexcept : m_bytes(bytes) {}

    [[nodiscard]] bool Failed() const noexcept { return m_failed; }
    [[nodiscard]] std::size_t Left() const noexcept { return m_bytes.size() - m_position; }

    std::uint32_t ReadU32() noexcept { return static_cast<std::uint32_t>(ReadBigEndian(4)); }
    std::int32_t ReadI32() noexcept { return static_cast<std::int32_t>(ReadU32()); }
    float ReadF32() noexcept { return std::bit_cast<float>(ReadU32()); }
    double ReadF64() noexcept { return std::bit_cast<double>(ReadBigEndian(8)); }
    /// The next count bytes, borrowed; none where there are fewer.
    ByteSpan ReadBytes(std::size_t count) noexcept
    {
        if (m_failed || count > Left()) {
            m_failed = true;
            return {};
        }
        m_position += count;
        return m_bytes.subspan(m_position - count, count);
    }

private:
    std::uint64_t ReadBigEndian(std::size_t count) noexcept
    {
        std::uint64_t value = 0;
        for (const std::uint8_t byte : ReadBytes(count))
            value = value << 8 | byte;
        return value;
    }

    ByteSpan m_bytes;
    std::size_t m_position = 0;
    bool m_failed = false;
};
} // namespace corvane::flightgear
