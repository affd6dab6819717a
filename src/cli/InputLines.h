#pragma once

#include <optional>
#include <string>

namespace corvane {
/// Reads lines as they come, without ever waiting for them.
class InputLines {
public:
    /// A longer line comes in pieces of this size.
    static constexpr std::size_t LongestLine = 32768;

    /// descriptor  of a file, pipe or terminal, which stays the caller's; below 0 there are no lines
    explicit InputLines(int descriptor) noexcept : m_descriptor(descriptor) {}

    /// The next line without its end; nothing while none is complete. What stands behind the last line end is a line
    /// once the input has ended.
    std::optional<std::string> Next();

private:
    void ReadWhatWaits();
    std::string Take(std::size_t length, std::size_t lengthOfEnd);

    int m_descriptor;
    std::string m_waiting;
    bool m_ended = false;
};
} // namespace corvane
