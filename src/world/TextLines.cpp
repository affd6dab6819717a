#include "world/TextLines.h"

#include <algorithm>

namespace corvane {
Result<std::unique_ptr<TextLines>> TextLines::Open(const std::filesystem::path& path)
{
    Result<std::unique_ptr<ByteSource>> source = OpenFileSource(path);
    if (!source)
        return source.error();
    return std::make_unique<TextLines>(*std::move(source));
}

bool TextLines::Refill()
{
    const Result<ByteSpan> piece = m_bytes.Next();
    if (!piece) {
        m_failure = piece.error();
        return false;
    }
    m_piece = {reinterpret_cast<const char*>(piece->data()), piece->size()};
    return !m_piece.empty();
}

void TextLines::Keep(std::string_view part)
{
    const std::string_view kept = part.substr(0, MostLineBytes - std::min(m_carried.size(), MostLineBytes));
    m_carried.append(kept);
    m_tooLong = m_tooLong || kept.size() < part.size();
}

void TextLines::Trim()
{
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    if (!m_line.empty() && m_line.back() == '\r')
        m_line.remove_suffix(1);
    if (m_number == 1 && m_line.starts_with(ByteOrderMark))
        m_line.remove_prefix(ByteOrderMark.size());
}

bool TextLines::Next()
{
    m_carried.clear();
    m_tooLong = false;
    if (m_failure || (m_piece.empty() && !Refill()))
        return false;
    ++m_number;
    std::size_t end = m_piece.find('\n');
    if (end != std::string_view::npos && end <= MostLineBytes) { // nearly every line
        m_line = m_piece.substr(0, end);
        m_piece.remove_prefix(end + 1);
        Trim();
        return true;
    }
    for (; end == std::string_view::npos; end = m_piece.find('\n')) {
        Keep(m_piece);
        m_piece = {};
        if (!Refill())
            break;
    }
    if (m_failure)
        return false;
    if (end != std::string_view::npos) {
        Keep(m_piece.substr(0, end));
        m_piece.remove_prefix(end + 1);
    }
    m_line = m_carried;
    Trim();
    return true;
}

Result<void> TextLines::Drain()
{
    while (!m_failure && Refill()) {
    }
    m_piece = {};
    if (m_failure)
        return *m_failure;
    return {};
}
} // namespace corvane
