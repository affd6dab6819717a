#pragma once

#include "core/Result.h"
#include "world/UnpackedBytes.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {
/// The lines of a text file, plain or gzip, read forward in pieces: neither the file nor its text is held as a whole.
///
/// Lines end in LF or CR LF; a byte order mark is no part of the first. Of a line longer than MostLineBytes only those
/// are kept.
class TextLines {
public:
    static constexpr std::size_t MostLineBytes = std::size_t{256} * 1024;

    /// Errors name the full path.
    static Result<std::unique_ptr<TextLines>> Open(const std::filesystem::path& path);
    explicit TextLines(std::unique_ptr<ByteSource> source) : m_bytes(std::move(source)) {}

    /// Goes to the next line; false at the end, and where the file cannot be read on: Failure tells which.
    bool Next();
    /// The line at hand, without its end; valid until the next call of Next.
    [[nodiscard]] std::string_view Line() const noexcept { return m_line; }
    /// Counts from 1.
    [[nodiscard]] std::int64_t Number() const noexcept { return m_number; }
    /// The line at hand was longer than what is kept of it.
    [[nodiscard]] bool TooLong() const noexcept { return m_tooLong; }

    [[nodiscard]] const std::string& Name() const noexcept { return m_bytes.Name(); }
    [[nodiscard]] double PartDone() const noexcept { return m_bytes.PartDone(); }
    [[nodiscard]] const std::optional<Error>& Failure() const noexcept { return m_failure; }
    /// Reads the file to its end without looking at it, which is how damage behind the last line is found.
    Result<void> Drain();

private:
    bool Refill();
    void Keep(std::string_view part);
    void Trim();

    UnpackedBytes m_bytes;
    std::string_view m_piece; ///< what is left of the piece at hand
    std::string m_carried;    ///< the beginning of a line that goes on in the next piece
    std::string_view m_line;
    std::int64_t m_number = 0;
    bool m_tooLong = false;
    std::optional<Error> m_failure;
};
} // namespace corvane
