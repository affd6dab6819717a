#include "core/ByteSource.h"

#include "core/File.h"
#include "core/OpenFile.h"
#include "os/Files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
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
    /// Reads so many bytes from where the content ends, and keeps its last ones.
    Result<void> ReadOn(std::size_t kept, std::size_t count);
    /// Makes the content empty, with its end at an offset.
    Result<void> GoTo(std::uint64_t offset);
    /// Moves the content's last bytes to where a block can be read behind them.
    void KeepLast(std::size_t kept, std::size_t count);

    [[nodiscard]] std::uint64_t End() const noexcept { return m_start + m_content.size(); }

    std::string m_name;
    FileHandle m_file; ///< to be read from End() on
    std::uint64_t m_size;
    FileBytes m_buffer;
    std::span<std::uint8_t> m_content; ///< a part of the file, within the buffer
    std::uint64_t m_start = 0;         ///< file offset of the content's first byte
};
} // namespace

Result<ByteSpan> MemorySource::View(std::uint64_t offset, std::size_t /*count*/)
{
    return m_bytes.subspan(static_cast<std::size_t>(std::min<std::uint64_t>(offset, m_bytes.size())));
}

Result<ByteSpan> FileSource::ViewAhead(std::uint64_t offset, std::size_t count, std::size_t atLeast)
{
    offset = std::min(offset, m_size);
    if (offset < m_start || offset > End()) {
        if (const Result<void> gone = GoTo(offset); !gone)
            return gone.error();
    }
    const std::uint64_t wantedEnd = offset + std::min<std::uint64_t>(count, m_size - offset);
    if (wantedEnd > End()) {
        const auto missing = static_cast<std::size_t>(wantedEnd - End());
        const auto kept = static_cast<std::size_t>(End() - offset);
        if (const Result<void> read = ReadOn(kept, std::max(missing, atLeast)); !read)
            return read.error();
    }
    return ByteSpan(m_content).subspan(static_cast<std::size_t>(offset - m_start));
}

Result<void> FileSource::GoTo(std::uint64_t offset)
{
    m_content = {};
    m_start = offset;
    if (!SeekTo(m_file.get(), offset))
        return Fail(m_name, std::generic_category().message(errno));
    return {};
}

void FileSource::KeepLast(std::size_t kept, std::size_t count)
{
    constexpr std::size_t Line = 64; // of the cache: the system copies fastest to the start of one
    const std::span<std::uint8_t> last = m_content.last(kept);
    m_start = End() - kept;
    FileBytes larger;
    if (m_buffer.Size() < kept + count + Line)
        larger = FileBytes(kept + count + Line);
    FileBytes& target = larger.Size() > 0 ? larger : m_buffer;
    const std::size_t before = (Line - (reinterpret_cast<std::uintptr_t>(target.Data()) + kept) % Line) % Line;
    if (kept > 0)
        std::memmove(target.Data() + before, last.data(), kept); // perhaps within the buffer
    m_content = {target.Data() + before, kept};
    if (larger.Size() > 0)
        m_buffer = std::move(larger);
}

Result<void> FileSource::ReadOn(std::size_t kept, std::size_t count)
{
    KeepLast(kept, count);
    const std::size_t read = std::fread(m_content.data() + kept, 1, count, m_file.get());
    m_content = {m_content.data(), kept + read};
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
