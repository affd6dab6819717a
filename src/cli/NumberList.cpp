#include "cli/NumberList.h"

#include <charconv>

namespace corvane {
std::optional<std::vector<double>> ParseNumbers(std::string_view text, char separator, std::size_t count)
{
    std::vector<double> numbers;
    for (;;) {
        const std::string_view part = text.substr(0, text.find(separator));
        double number = 0;
        const auto parsed = std::from_chars(part.data(), part.data() + part.size(), number);
        if (parsed.ec != std::errc() || parsed.ptr != part.data() + part.size())
            return std::nullopt;
        numbers.push_back(number);
        if (part.size() == text.size())
            break;
        text.remove_prefix(part.size() + 1);
    }
    if (numbers.size() != count)
        return std::nullopt;
    return numbers;
}

CLI::Validator Numbers(char separator, std::size_t count, const char* form)
{
    return {[=](std::string& text) {
                return ParseNumbers(text, separator, count) ? std::string() : "must have the form " + std::string(form);
            },
            form};
}
} // namespace corvane
