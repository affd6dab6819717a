#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace corvane {
/// A line of a file that was passed over.
struct PassedLine {
    std::string File; ///< full name
    std::int64_t Line = 0;
    std::string Why;         ///< one clause, UTF-8
    bool OfAirspace = false; ///< a whole airspace went with it
};

/// How many lines of a file were passed over, and the first of them.
struct PassedLines {
    std::int64_t Count = 0;
    PassedLine First;
};

/// Notes the lines of one file that are passed over: all are told, none but the first is kept.
class ImportLog {
public:
    using Teller = std::function<void(const PassedLine&)>;

    ImportLog(std::string file, const Teller& tell) : m_file(std::move(file)), m_tell(tell) {}

    void PassOver(std::int64_t line, std::string why, bool ofAirspace = false);
    [[nodiscard]] const PassedLines& Passed() const noexcept { return m_passed; }

private:
    std::string m_file;
    const Teller& m_tell;
    PassedLines m_passed;
};
} // namespace corvane
