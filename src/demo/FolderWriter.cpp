#include "demo/FolderWriter.h"

#include "core/AtomicFile.h"
#include "core/File.h"

#include <system_error>

namespace corvane {
namespace fs = std::filesystem;

FolderWriter::~FolderWriter()
{
    if (m_keep)
        return;
    for (auto created = m_new.rbegin(); created != m_new.rend(); ++created)
        DeleteFile(*created); // a folder that others have put files into stays
}

Result<void> FolderWriter::CreateFolder(const fs::path& folder)
{
    std::error_code error;
    if (folder.empty() || fs::is_directory(folder, error))
        return {};
    if (Result<void> parent = CreateFolder(folder.parent_path()); !parent)
        return parent;
    if (!fs::create_directory(folder, error)) // false also where a file of that name stands
        return Fail(FullName(folder), error ? error.message() : "is not a folder");
    m_new.push_back(folder);
    return {};
}

Result<void> FolderWriter::Write(const fs::path& relativePath, ByteSpan content)
{
    const fs::path path = m_root / relativePath;
    if (Result<void> folder = CreateFolder(path.parent_path()); !folder)
        return folder;
    const bool isNew = !FileExists(path);
    Result<void> written = WriteFileAtomically(path, content);
    if (written && isNew)
        m_new.push_back(path);
    return written;
}
} // namespace corvane
