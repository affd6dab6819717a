#pragma once

#include "core/Bytes.h"
#include "core/Result.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace corvane {
inline constexpr std::string_view SettingsFileName = "atc_settings.tcs";
inline constexpr std::string_view SettingsVersionText = "Corvane Version 3.0";
inline constexpr std::uint8_t Fs2002Version = 1;

/// The settings file's one record, in file order. Texts are 8-bit Windows-1252. Format: docs/formats.md.
struct SettingsRecord {
    std::string VersionText = std::string(SettingsVersionText);
    std::uint8_t RecordMark = 1;
    std::uint8_t FsVersion = 0; ///< 1 for the 2002 simulator, the only one known
    std::string FsPath;         ///< the simulator's main folder, without trailing separator
    std::int32_t AirportCount = 0;
    std::int32_t AirspaceCount = 0;
    std::int32_t VorCount = 0;
    std::int32_t NdbCount = 0;
    bool operator==(const SettingsRecord&) const = default;
};

Bytes EncodeSettings(const SettingsRecord& settings);
/// Fails where the bytes end inside the record; what follows the record is ignored.
Result<SettingsRecord> DecodeSettings(ByteSpan bytes, std::string_view fileName);

Result<SettingsRecord> ReadSettings(const std::filesystem::path& path);
/// Replaces the file as a whole: a failure leaves the old one.
Result<void> WriteSettings(const std::filesystem::path& path, const SettingsRecord& settings);
/// Whether the file's leading version text is exactly this version's. An Error where the file cannot be read.
Result<bool> HasCurrentVersion(const std::filesystem::path& path);
} // namespace corvane
