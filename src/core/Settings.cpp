#include "core/Settings.h"

#include "core/AtomicFile.h"
#include "core/FieldCodec.h"
#include "core/File.h"
#include "core/NumberText.h"

namespace corvane {
Bytes EncodeSettings(const SettingsRecord& settings)
{
    Bytes bytes;
    FieldWriter fields(bytes);
    VisitFields(settings, fields);
    return bytes;
}

Result<SettingsRecord> DecodeSettings(ByteSpan bytes, std::string_view fileName)
{
    ByteReader in(bytes);
    SettingsRecord settings;
    FieldReader fields(in);
    VisitFields(settings, fields);
    if (in.Failed())
        return Fail(std::string(fileName),
                    "ends inside the settings record, after " + NumberText(std::int64_t(bytes.size())) + " bytes");
    return settings;
}

Result<SettingsRecord> ReadSettings(const std::filesystem::path& path)
{
    const Result<FileBytes> file = ReadWholeFile(path);
    if (!file)
        return file.error();
    return DecodeSettings(file->Span(), FullName(path));
}

Result<void> WriteSettings(const std::filesystem::path& path, const SettingsRecord& settings)
{
    return WriteFileAtomically(path, EncodeSettings(settings));
}

Result<bool> HasCurrentVersion(const std::filesystem::path& path)
{
    const Result<FileBytes> file = ReadWholeFile(path);
    if (!file)
        return file.error();
    ByteReader in(file->Span());
    return in.ReadText16() == SettingsVersionText;
}
} // namespace corvane
