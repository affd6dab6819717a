#pragma once

#include "core/Bytes.h"

#include <cstdint>

namespace corvane {
/// The CRC-32 of ISO 3309 (polynomial 0x04C11DB7, reflected), as zip and PNG files use it.
std::uint32_t Crc32(ByteSpan bytes) noexcept;
} // namespace corvane
