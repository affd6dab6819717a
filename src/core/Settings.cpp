#include "core/Settings.h"

#include "core/AtomicFile.h"
#include "core/File.h"
#include "core/NumberText.h"

namespace corvane {
Bytes EncodeSettings(const SettingsRecord& settings)
{
    Bytes bytes;
    ByteWriter out(bytes);
    out.WriteText16(settings.VersionText);
    out.WriteU8(settings.RecordMark);
    out.WriteU8(settings.FsVersion);
    out.WriteText16(settings.FsPath);
    out.WriteI32(settings.AirportCount);
    out.WriteI32(settings.AirspaceCount);
    out.WriteI32(settings.VorCount);
    out.WriteI32(settings.NdbCount);
    return bytes;
}

Result<SettingsRecord> DecodeSettings(ByteSpan bytes, std::string_view fileName)
{
    ByteReader in(bytes);
    SettingsRecord settings;
    settings.VersionText = in.ReadText16();
    settings.RecordMark = in.ReadU8();
    settings.FsVersion = in.ReadU8();
    settings.FsPath = in.ReadText16();
    settings.AirportCount = in.ReadI32();
    settings.AirspaceCount = in.ReadI32();
    settings.VorCount = in.ReadI32();
    settings.NdbCount = in.ReadI32();
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
