#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace corvane {
/// Descriptors of the process's standard streams.
inline constexpr int StandardInput = 0;
inline constexpr int StandardError = 2;

bool IsTerminal(int descriptor) noexcept;

/// Reads what waits in a file, pipe or terminal, without waiting for more.
///
/// Returns  how many bytes were put into buffer; 0 once the input has ended or cannot be read; nothing while none wait
std::optional<std::size_t> ReadWaiting(int descriptor, std::span<char> buffer) noexcept;
} // namespace corvane
