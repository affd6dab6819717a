#include "core/ByteSource.h"

#include "core/File.h"
#include "core/OpenFile.h"
#include "platform/os/Files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>
#include <vector>

namespace corvane {
namespace {
class FileSource final : public ByteSource {
public:
    FileSource(std::string name, FileHandle file, std::uint64_t size)
        : m_name(std::move(name)), m_file(std::move(file)), m_size(size)
    {
    }

    [[nodiscard]] const std::string& Name() const noexcept override { return m_name; }
    [[nodiscard]] std::uint64_t Size() const noexcept override { return m_size; }
    Result<ByteSpan> View(std::uint64_t offset, std::size_t count) override
    {
        return ViewAhead(offset, count, BlockSize);
    }
    Result<ByteSpan> ViewAlone(std::uint64_t offset, std::size_t count) override { return ViewAhead(offset, count, 0); }

private:
    static constexpr std::size_t BlockSize = std::size_t{128} * 1024;

    /// The bytes from an offset on; where they must be read, at least so many are.
    Result<ByteSpan> ViewAhead(std::uint64_t offset, std::size_t count, std::size_t atLeast);
    /// Makes the bytes from offset on the buffer's content.
    Result<void> Fill(std::uint64_t offset, std::size_t count);

    std::string m_name;
    FileHandle m_file;
    std::uint64_t m_size;
    std::uint64_t m_readTo = 0; ///< where the next read of m_file starts
    std::vector<std::uint8_t> m_buffer;
    std::uint64_t m_start = 0; ///< file offset of the buffer's first byte
    std::size_t m_filled = 0;
};
} // namespace

Result<ByteSpan> MemorySource::View(std::uint64_t offset, std::size_t /*count*/)
{
    return m_bytes.subspan(static_cast<std::size_t>(std::min<std::uint64_t>(offset, m_bytes.size())));
}

Result<ByteSpan> FileSource::ViewAhead(std::uint64_t offset, std::size_t count, std::size_t atLeast)
{
    offset = std::min(offset, m_size);
    const std::uint64_t wantedEnd = offset + std::min<std::uint64_t>(count, m_size - offset);
    if (offset < m_start || wantedEnd > m_start + m_filled) {
        const auto wanted = static_cast<std::size_t>(wantedEnd - offset);
        if (const Result<void> filled = Fill(offset, std::max(wanted, atLeast)); !filled)
            return filled.error();
    }
    return ByteSpan(m_buffer.data(), m_filled).subspan(static_cast<std::size_t>(offset - m_start));
}

Result<void> FileSource::Fill(std::uint64_t offset, std::size_t count)
{
    m_filled = 0; // a failure leaves an empty buffer
    m_start = offset;
    if (m_readTo != offset && !SeekTo(m_file.get(), offset))
        return Fail(m_name, std::generic_category().message(errno));
    m_buffer.resize(std::max(count, m_buffer.size()));
    m_filled = std::fread(m_buffer.data(), 1, count, m_file.get());
    m_readTo = offset + m_filled;
    if (std::ferror(m_file.get()) != 0)
        return Fail(m_name, std::generic_category().message(errno));
    return {};
}

Result<std::unique_ptr<ByteSource>> OpenFileSource(const std::filesystem::path& path)
{
    Result<OpenedFile> opened = OpenRegularFile(path);
    if (!opened)
        return opened.error();
    return std::unique_ptr<ByteSource>(
        std::make_unique<FileSource>(FullName(path), std::move(opened->File), opened->Size));
}

Result<std::unique_ptr<ByteSource>> OpenFileSourceIfPresent(const std::filesystem::path& path)
{
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        return std::unique_ptr<ByteSource>(std::make_unique<MemorySource>(FullName(path), ByteSpan()));
    return OpenFileSource(path);
}
} // namespace corvane
