#include "recording/Crc32.h"

#include <array>

namespace corvane {
static constexpr std::array<std::uint32_t, 256> MakeTable() noexcept
{
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1) != 0 ? (value >> 1) ^ 0xEDB88320U : value >> 1;
        table[byte] = value;
    }
    return table;
}

std::uint32_t Crc32(ByteSpan bytes) noexcept
{
    static constexpr std::array<std::uint32_t, 256> Table = MakeTable();
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const std::uint8_t byte : bytes)
        crc = (crc >> 8) ^ Table[(crc ^ byte) & 0xFF];
    return ~crc;
}
} // namespace corvane
