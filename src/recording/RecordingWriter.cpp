#include "recording/RecordingWriter.h"

#include "core/File.h"
#include "os/Files.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace corvane {
static Error SystemFailure(const std::filesystem::path& path)
{
    return Fail(FullName(path), std::generic_category().message(errno));
}

Result<RecordingWriter> RecordingWriter::Create(const std::filesystem::path& file, const RecordingHead& head)
{
    FileHandle handle(OpenForWriting(file));
    if (!handle)
        return SystemFailure(file);
    static_cast<void>(std::setvbuf(handle.get(), nullptr, _IONBF, 0)); // a buffer would be lost in a crash
    RecordingWriter writer(file, std::move(handle));
    if (const Result<void> written = writer.WriteBytes(EncodeRecordingHead(head)); !written) {
        writer.m_file.reset();
        std::error_code ignored;
        if (std::filesystem::is_regular_file(file, ignored)) // a device is not ours to delete
            DeleteFile(file);
        return written.error();
    }
    return writer;
}

Result<void> RecordingWriter::Write(const RecordView& record)
{
    m_record.clear();
    AppendRecord(m_record, record);
    if (m_size + m_record.size() > MaxRecordingSize)
        return Fail(FullName(m_path), "has reached the largest size of a recording");
    return WriteBytes(m_record);
}

Result<void> RecordingWriter::WriteBytes(ByteSpan bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file.get()) != bytes.size())
        return SystemFailure(m_path);
    m_size += bytes.size();
    return {};
}
} // namespace corvane
