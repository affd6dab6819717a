#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane {
/// What the radar can call attention to, the most urgent first.
enum class AttentionSign : std::uint8_t { Alert, Silence, Chat, Join, Leave };
inline constexpr std::size_t AttentionSignCount = 5;

/// "alert", "silence", ...: the keys of settings.
std::string_view AttentionSignName(AttentionSign sign) noexcept;

/// Which signs are heard and which are seen. None at first.
struct AttentionOptions {
    std::array<bool, AttentionSignCount> Sound{};
    std::array<bool, AttentionSignCount> Flash{};
    bool operator==(const AttentionOptions&) const = default;
};

/// Decides what sounds and what flashes. Times are milliseconds of one clock.
///
/// However much happens there is one sound and one flash a second: of what is noted meanwhile the most urgent counts
/// and the rest is dropped. Who is there when a session is joined does not join.
class AttentionSigns {
public:
    static constexpr std::int64_t ApartMs = 1000;
    static constexpr std::int64_t SettlingMs = 3000;

    explicit AttentionSigns(std::int64_t nowMs) noexcept : m_startMs(nowMs) {}

    void Note(AttentionSign sign, std::int64_t nowMs) noexcept;
    /// The session's silence has begun or goes on; it is noted once until it has ended.
    void NoteSilence(bool silent, std::int64_t nowMs) noexcept;

    struct Due {
        std::optional<AttentionSign> Sound;
        std::optional<AttentionSign> Flash;
        bool operator==(const Due&) const = default;
    };
    /// What is due now; to be asked several times a second.
    Due Take(const AttentionOptions& options, std::int64_t nowMs) noexcept;

private:
    struct Channel {
        std::array<bool, AttentionSignCount> Noted{};
        std::optional<std::int64_t> LastMs;

        std::optional<AttentionSign> Take(const std::array<bool, AttentionSignCount>& wanted,
                                          std::int64_t nowMs) noexcept;
    };

    std::int64_t m_startMs;
    bool m_silent = false;
    Channel m_sound;
    Channel m_flash;
};
} // namespace corvane
