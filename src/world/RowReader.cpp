#include "world/RowReader.h"

#include "core/NumberText.h"
#include "core/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace corvane {
static constexpr std::string_view Blanks = " \t";

std::optional<double> NumberOf(std::string_view text) noexcept
{
    if (text.size() > 1 && text.front() == '+' && text[1] != '-')
        text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

static unsigned char ByteAt(std::string_view text, std::size_t at) noexcept
{
    return static_cast<unsigned char>(text[at]);
}

static bool IsAscii(std::string_view text) noexcept
{
    return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Control characters, those of codes 0x80 to 0x9F that UTF-8 writes as two bytes among them, become blanks.
static std::string WithoutControls(std::string_view text, bool utf8)
{
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const unsigned char c = ByteAt(text, i);
        if (c < 0x20 || c == 0x7F) {
            plain += ' ';
        } else if (utf8 && c == 0xC2 && ByteAt(text, i + 1) < 0xA0) {
            plain += ' ';
            ++i;
        } else if (!utf8 && (c == 0x81 || c == 0x8D || c == 0x8F || c == 0x90 || c == 0x9D)) {
            plain += ' '; // the codes that Windows-1252 leaves open
        } else {
            plain += text[i];
        }
    }
    return plain;
}

static std::string SqueezeBlanks(std::string_view text)
{
    std::string squeezed;
    squeezed.reserve(text.size());
    for (const char c : TrimSpaces(text)) {
        if (c != ' ' || squeezed.back() != ' ')
            squeezed += c;
    }
    return squeezed;
}

std::string NameText(std::string_view text, std::string_view line)
{
    if (IsAscii(text))
        return SqueezeBlanks(WithoutControls(text, true));
    const bool utf8 = IsUtf8(line);
    const std::string plain = WithoutControls(text, utf8);
    return SqueezeBlanks(utf8 ? Utf8ToWindows1252(plain) : plain);
}

std::string Excerpt(std::string_view text)
{
    constexpr std::size_t MostBytes = 40;
    const bool cut = text.size() > MostBytes;
    text = text.substr(0, MostBytes);
    while (cut && !text.empty() && (ByteAt(text, text.size() - 1) & 0xC0U) == 0x80)
        text.remove_suffix(1); // not half a character
    if (cut && !text.empty() && ByteAt(text, text.size() - 1) >= 0xC0)
        text.remove_suffix(1);
    return Windows1252ToUtf8(NameText(text, text)) + (cut ? "..." : "");
}

std::string_view RowReader::Field()
{
    if (Failed())
        return {};
    ++m_field;
    const std::size_t start = std::min(m_rest.find_first_not_of(Blanks), m_rest.size());
    const std::size_t end = std::min(m_rest.find_first_of(Blanks, start), m_rest.size());
    const std::string_view field = m_rest.substr(start, end - start);
    m_rest.remove_prefix(end);
    if (field.empty())
        FailAt({}, "");
    return field;
}

void RowReader::Skip(int fields)
{
    for (int i = 0; i < fields && !Failed(); ++i)
        static_cast<void>(Field());
}

double RowReader::Number()
{
    const std::string_view field = Field();
    const std::optional<double> number = NumberOf(field);
    if (!number)
        FailAt(field, "a number");
    return number.value_or(0);
}

double RowReader::NumberWithin(double lowest, double highest, const char* what)
{
    const std::string_view field = Field();
    const std::optional<double> number = NumberOf(field);
    if (number && *number >= lowest && *number <= highest)
        return *number;
    FailAt(field, what);
    return 0;
}

LatLon RowReader::Position()
{
    const double lat = NumberWithin(-90, 90, "a latitude");
    return {lat, NumberWithin(-180, 180, "a longitude")};
}

std::int64_t RowReader::Whole()
{
    const std::string_view field = Field();
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    if (field.empty() || error != std::errc() || end != field.data() + field.size())
        FailAt(field, "a whole number");
    return value;
}

bool RowReader::HasMore() const noexcept
{
    return !Failed() && m_rest.find_first_not_of(Blanks) != std::string_view::npos;
}

std::string RowReader::Rest()
{
    if (Failed())
        return {};
    return NameText(std::exchange(m_rest, {}), m_line);
}

void RowReader::FailAt(std::string_view text, const char* expected) noexcept
{
    if (Failed())
        return;
    m_expected = expected;
    m_found = text;
    m_failedField = m_field;
}

void RowReader::Refuse(const char* why) noexcept
{
    if (!Failed())
        m_expected = why;
}

std::string RowReader::Why() const
{
    if (m_failedField == 0)
        return m_expected;
    if (m_found.empty())
        return "ends before field " + NumberText(m_failedField);
    return "field " + NumberText(m_failedField) + " is \"" + Excerpt(m_found) + "\", not " + m_expected;
}
} // namespace corvane
