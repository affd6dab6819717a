#include "core/BglReader.h"

#include <algorithm>
#include <bit>

namespace corvane {
std::int32_t BglReader::ReadI24(std::int64_t offset) noexcept
{
    constexpr std::uint32_t SignBit = 0x800000;
    const std::uint32_t value = ReadUnsigned(offset, 3);
    return static_cast<std::int32_t>((value ^ SignBit) - SignBit);
}

float BglReader::ReadF32(std::int64_t offset) noexcept
{
    return std::bit_cast<float>(ReadUnsigned(offset, 4));
}

std::string BglReader::ReadText(std::int64_t offset, std::int64_t length)
{
    if (length <= 0)
        return {};
    if (offset < 0 || offset > End() || length > End() - offset) {
        m_failed = true;
        return {};
    }
    const std::int64_t inFile = std::min(length, Size() - offset); // the byte behind the file is 0, which is skipped
    const ByteSpan field = m_file.subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(inFile));
    std::string text;
    std::copy_if(field.begin(), field.end(), std::back_inserter(text), [](std::uint8_t byte) { return byte != 0; });
    return text;
}
} // namespace corvane
