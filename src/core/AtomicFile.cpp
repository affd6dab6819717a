#include "core/AtomicFile.h"

#include "core/File.h"
#include "os/Files.h"

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

Result<void> AtomicFile::Open()
{
    m_file.reset(OpenForWriting(m_temporary));
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

void AtomicFile::Close()
{
    if (m_file && std::fclose(m_file.release()) != 0) // a full disk may show only here
        FailWith(std::generic_category().message(errno));
}

Result<void> AtomicFile::Commit()
{
    Close();
    if (!m_status)
        return m_status;
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
