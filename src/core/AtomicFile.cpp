#include "core/AtomicFile.h"

#include "core/File.h"
#include "os/Files.h"

#include <cassert>
#include <cerrno>
#include <system_error>
#include <utility>

namespace corvane {
AtomicFile::AtomicFile(std::filesystem::path path) : m_path(std::move(path)), m_temporary(m_path)
{
    m_temporary += ".part";
}

AtomicFile::~AtomicFile()
{
    m_file.reset();
    if (m_created)
        DeleteFile(m_temporary);
}

void AtomicFile::FailWith(std::string why)
{
    if (m_status)
        m_status = Fail(FullName(m_path), std::move(why));
}

Result<void> AtomicFile::ClearTheWay() const
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::symlink_status(m_temporary, error);
    if (!std::filesystem::exists(status))
        return {}; // or unknown: creating the file will tell
    if (std::filesystem::is_symlink(status))
        return Fail(FullName(m_temporary), "a link of this name is in the way");
    if (!std::filesystem::is_regular_file(status))
        return Fail(FullName(m_temporary), "something of this name that is no file is in the way");
    std::filesystem::remove(m_temporary, error);
    if (error)
        return Fail(FullName(m_temporary), error.message());
    return {};
}

Result<void> AtomicFile::Open()
{
    assert(!m_file && !m_created);
    m_status = ClearTheWay();
    if (!m_status)
        return m_status;
    m_file.reset(CreateForWriting(m_temporary));
    if (m_file)
        m_created = true;
    else
        FailWith(std::generic_category().message(errno));
    return m_status;
}

void AtomicFile::Write(ByteSpan bytes)
{
    if (!m_status || bytes.empty()) // fwrite takes no null pointer, which is what an empty span may have
        return;
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file.get()) != bytes.size())
        FailWith(std::generic_category().message(errno));
}

Result<void> AtomicFile::Close()
{
    if (m_file && std::fclose(m_file.release()) != 0) // a full disk may show only here
        FailWith(std::generic_category().message(errno));
    return m_status;
}

Result<void> AtomicFile::Commit()
{
    if (Result<void> closed = Close(); !closed)
        return closed;
    std::error_code error;
    std::filesystem::rename(m_temporary, m_path, error);
    if (error)
        FailWith(error.message());
    else
        m_created = false;
    return m_status;
}

Result<void> WriteFileAtomically(const std::filesystem::path& path, ByteSpan content)
{
    AtomicFile file(path);
    if (Result<void> opened = file.Open(); !opened)
        return opened;
    file.Write(content);
    return file.Commit();
}
} // namespace corvane
