#pragma once

#include <bit>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
using Bytes = std::vector<std::uint8_t>;
using ByteSpan = std::span<const std::uint8_t>;

/// The little-endian number of Count bytes that starts at bytes. The fixed size lets the compiler make it one load.
template <std::size_t Count> constexpr std::uint64_t LittleEndian(const std::uint8_t* bytes) noexcept
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < Count; ++i)
        value |= std::uint64_t{bytes[i]} << (8 * i);
    return value;
}

/// Reads little-endian fields one after another from borrowed bytes.
///
/// A read that needs bytes beyond the end gives 0 or an empty text and makes the reader fail; every later read then
/// gives 0 too, so a decoder may read a whole record and ask Failed() once, and loops must do so.
class ByteReader {
public:
    explicit ByteReader(ByteSpan bytes) noexcept : m_bytes(bytes) {}

    [[nodiscard]] bool Failed() const noexcept { return m_failed; }
    [[nodiscard]] std::size_t Position() const noexcept { return m_position; }
    [[nodiscard]] std::size_t Left() const noexcept { return m_bytes.size() - m_position; }

    std::uint8_t ReadU8() noexcept { return static_cast<std::uint8_t>(ReadLittleEndian<1>()); }
    std::uint16_t ReadU16() noexcept { return static_cast<std::uint16_t>(ReadLittleEndian<2>()); }
    std::int16_t ReadI16() noexcept { return static_cast<std::int16_t>(ReadLittleEndian<2>()); }
    std::uint32_t ReadU32() noexcept { return static_cast<std::uint32_t>(ReadLittleEndian<4>()); }
    std::int32_t ReadI32() noexcept { return static_cast<std::int32_t>(ReadLittleEndian<4>()); }
    double ReadF64() noexcept { return std::bit_cast<double>(ReadLittleEndian<8>()); }

    /// The next count bytes, borrowed.
    ByteSpan ReadBytes(std::size_t count) noexcept
    {
        if (!Take(count))
            return {};
        return m_bytes.subspan(m_position - count, count);
    }

    /// A text stored as a 16-bit length and that many bytes, borrowed.
    std::string_view ReadText16() noexcept
    {
        const ByteSpan text = ReadBytes(ReadU16());
        return {reinterpret_cast<const char*>(text.data()), text.size()};
    }

private:
    bool Take(std::size_t count) noexcept
    {
        if (m_failed || count > Left()) {
            m_failed = true;
            return false;
        }
        m_position += count;
        return true;
    }

    template <std::size_t Count> std::uint64_t ReadLittleEndian() noexcept
    {
        if (!Take(Count))
            return 0;
        return LittleEndian<Count>(m_bytes.data() + (m_position - Count));
    }

    ByteSpan m_bytes;
    std::size_t m_position = 0;
    bool m_failed = false;
};

/// Appends little-endian fields to a byte vector.
class ByteWriter {
public:
    explicit ByteWriter(Bytes& out) noexcept : m_out(&out) {}

    [[nodiscard]] std::size_t Size() const noexcept { return m_out->size(); }

    void WriteU8(std::uint8_t value) { m_out->push_back(value); }
    void WriteU16(std::uint16_t value) { WriteLittleEndian(value, 2); }
    void WriteI16(std::int16_t value) { WriteLittleEndian(static_cast<std::uint16_t>(value), 2); }
    void WriteU32(std::uint32_t value) { WriteLittleEndian(value, 4); }
    void WriteI32(std::int32_t value) { WriteLittleEndian(static_cast<std::uint32_t>(value), 4); }
    void WriteF32(float value) { WriteLittleEndian(std::bit_cast<std::uint32_t>(value), 4); }
    void WriteF64(double value) { WriteLittleEndian(std::bit_cast<std::uint64_t>(value), 8); }
    void WriteBytes(ByteSpan bytes) { m_out->insert(m_out->end(), bytes.begin(), bytes.end()); }
    void WriteText(std::string_view text) { m_out->insert(m_out->end(), text.begin(), text.end()); }
    void WriteZeros(std::size_t count) { m_out->insert(m_out->end(), count, std::uint8_t{0}); }

    /// A text as a 16-bit length and its bytes; what exceeds 65535 bytes cannot be stored and is cut off.
    void WriteText16(std::string_view text)
    {
        const std::string_view stored = text.substr(0, std::numeric_limits<std::uint16_t>::max());
        WriteU16(static_cast<std::uint16_t>(stored.size()));
        WriteText(stored);
    }

    /// Overwrites four bytes that have already been written, for lengths and positions known only afterwards.
    void PatchI32(std::size_t at, std::int32_t value)
    {
        for (std::size_t i = 0; i < 4; ++i)
            (*m_out)[at + i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> (8 * i));
    }

private:
    void WriteLittleEndian(std::uint64_t value, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i)
            m_out->push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }

    Bytes* m_out;
};
} // namespace corvane
