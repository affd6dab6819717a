#include "world/WorldImport.h"

#include "builder/DatabaseWriter.h"
#include "core/AtomicFile.h"
#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/PathLookup.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "world/Credits.h"
#include "world/NavFile.h"

#include <algorithm>
#include <cassert>
#include <system_error>
#include <utility>

namespace corvane {
namespace fs = std::filesystem;

namespace {
/// Folders made on the way; unless kept, those that are empty go again.
class MadeFolders {
public:
    MadeFolders() = default;
    MadeFolders(const MadeFolders&) = delete;
    MadeFolders& operator=(const MadeFolders&) = delete;
    MadeFolders(MadeFolders&&) = delete;
    MadeFolders& operator=(MadeFolders&&) = delete;
    ~MadeFolders()
    {
        for (auto folder = m_made.rbegin(); folder != m_made.rend(); ++folder)
            DeleteFile(*folder);
    }

    Result<void> Make(const fs::path& folder);
    void Keep() noexcept { m_made.clear(); }

private:
    std::vector<fs::path> m_made;
};

class WorldImporter {
public:
    WorldImporter(const WorldImport& import, std::span<const std::int16_t> magVar,
                  const WorldImportCallbacks& callbacks);

    Result<WorldImportCounts> Run();

private:
    Result<void> Prepare();
    Result<void> ReadAll();
    Result<void> ReadNav();
    Result<void> ReadApt();
    Result<void> ReadAirspaces(const fs::path& path);
    Result<void> MakeMaps();
    Result<std::unique_ptr<TextLines>> Begin(const fs::path& path);
    void End(const ImportLog& log, std::uint64_t size);
    bool Tell(const std::string& file, std::uint64_t size, double part) const;
    [[nodiscard]] SettingsRecord Settings() const;
    Result<void> Commit();
    Result<void> Replace(AtomicFile& settings, AtomicFile& credits);

    const WorldImport& m_import;
    std::span<const std::int16_t> m_magVar;
    const WorldImportCallbacks& m_callbacks;
    fs::path m_folder;                 ///< absolute
    std::vector<fs::path> m_airspaces; ///< each file once
    SimulatorFolder m_home;            ///< that the settings name
    MadeFolders m_made;                ///< goes after the writer, whose files may lie in it
    bool m_keepsMagdec = false;
    MagVarGrid m_grid;
    DatabaseWriter m_writer;
    WorldMaps m_maps;
    EncodedRecords m_records{[this](EncodedRecords& full) { m_writer.Append(full); }};
    LocalizerTable m_localizers;
    std::vector<SourceCredit> m_credits;
    WorldImportCounts m_counts;
    std::uint64_t m_bytes = 0;     ///< of all files
    std::uint64_t m_bytesDone = 0; ///< of those that are read
};
} // namespace

/// A folder's absolute path without a separator at its end.
static fs::path AbsoluteFolder(const fs::path& folder)
{
    std::error_code ignored;
    const fs::path absolute = fs::absolute(folder, ignored).lexically_normal();
    return absolute.has_filename() ? absolute : absolute.parent_path();
}

SimulatorFolder FolderOfWorldData(const fs::path& appFolder)
{
    fs::path folder = AbsoluteFolder(appFolder);
    if (std::optional<std::string> text = Utf8ToWindows1252Exactly(folder.string()))
        return {*std::move(text), std::move(folder)};
    return FolderBeside(folder, "corvane-world");
}

static std::uint64_t SizeOf(const fs::path& path)
{
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
    return error ? 0 : size;
}

Result<void> MadeFolders::Make(const fs::path& folder)
{
    std::error_code error;
    if (folder.empty() || fs::is_directory(folder, error))
        return {};
    if (folder.has_parent_path() && folder.parent_path() != folder) {
        if (Result<void> parent = Make(folder.parent_path()); !parent)
            return parent;
    }
    if (!fs::create_directory(folder, error)) // false also where a file of that name stands
        return Fail(FullName(folder), error ? error.message() : "is not a folder");
    m_made.push_back(folder);
    return {};
}

WorldImporter::WorldImporter(const WorldImport& import, std::span<const std::int16_t> magVar,
                             const WorldImportCallbacks& callbacks)
    : m_import(import),
      m_magVar(magVar),
      m_callbacks(callbacks),
      m_folder(AbsoluteFolder(import.AppFolder)),
      m_home(FolderOfWorldData(m_folder)),
      m_writer(m_folder),
      m_maps(import.Maps, m_folder, [this](const std::string& file) { return Tell(file, 0, 0); })
{
    assert(magVar.size() == MagVarGrid::CellCount);
}

static bool ContainsFile(const std::vector<fs::path>& files, const fs::path& file)
{
    return std::ranges::any_of(files, [&](const fs::path& other) {
        std::error_code ignored;
        return fs::equivalent(other, file, ignored);
    });
}

Result<void> WorldImporter::Prepare()
{
    if (Result<void> made = m_made.Make(m_folder); !made)
        return made;
    m_keepsMagdec =
        m_home.Path == m_folder && FindPath(m_folder, "fs2002.exe") && FindPath(m_folder, "scenery/magdec.bgl");
    if (m_keepsMagdec) {
        ReadMagVarGrid(m_grid, m_folder);
    } else {
        std::ranges::copy(m_magVar, m_grid.Values.begin());
    }
    for (const fs::path& path : m_import.Airspaces) {
        if (!ContainsFile(m_airspaces, path))
            m_airspaces.push_back(path);
    }
    for (const fs::path& path : m_airspaces)
        m_bytes += SizeOf(path);
    m_bytes += SizeOf(m_import.AptDat) + SizeOf(m_import.NavDat);
    return m_writer.Open();
}

bool WorldImporter::Tell(const std::string& file, std::uint64_t size, double part) const
{
    if (!m_callbacks.Progress)
        return true;
    const double done = static_cast<double>(m_bytesDone) + part * static_cast<double>(size);
    return m_callbacks.Progress({file, m_bytes == 0 ? 1 : std::min(1.0, done / static_cast<double>(m_bytes))});
}

Result<std::unique_ptr<TextLines>> WorldImporter::Begin(const fs::path& path)
{
    Result<std::unique_ptr<TextLines>> lines = TextLines::Open(path);
    if (lines && !Tell(FullName(path), 0, 0))
        return Fail(FullName(path), "the import was interrupted");
    return lines;
}

void WorldImporter::End(const ImportLog& log, std::uint64_t size)
{
    m_bytesDone += size;
    if (log.Passed().Count > 0)
        m_counts.PassedOver.push_back(log.Passed());
}

Result<void> WorldImporter::ReadNav()
{
    const std::uint64_t size = SizeOf(m_import.NavDat);
    const Result<std::unique_ptr<TextLines>> lines = Begin(m_import.NavDat);
    if (!lines)
        return lines.error();
    ImportLog log((*lines)->Name(), m_callbacks.PassedOver);
    const PartCallback progress = [&](double part) { return m_writer.Status() && Tell((*lines)->Name(), size, part); };
    RowFile rows(**lines, log, progress);
    const Result<void> read = ReadNavFile(rows,
                                          {[this](const NavaidRecord& vor) { m_records.AddVor(vor); },
                                           [this](const NavaidRecord& ndb) { m_records.AddNdb(ndb); }},
                                          m_localizers);
    m_credits.push_back({rows.Name(), {rows.Title()}});
    End(log, size);
    return m_writer.Status() ? read : m_writer.Status();
}

Result<void> WorldImporter::ReadApt()
{
    const std::uint64_t size = SizeOf(m_import.AptDat);
    const Result<std::unique_ptr<TextLines>> lines = Begin(m_import.AptDat);
    if (!lines)
        return lines.error();
    ImportLog log((*lines)->Name(), m_callbacks.PassedOver);
    const PartCallback progress = [&](double part) { return Tell((*lines)->Name(), size, part); };
    RowFile rows(**lines, log, progress);
    Result<void> read = ReadAptFile(rows, m_import.Apt, m_grid, m_localizers, log, m_counts.Airports,
                                    [this](const AirportRecord& airport) {
                                        m_records.AddAirport(airport);
                                        return m_writer.Status();
                                    });
    m_credits.push_back({rows.Name(), {rows.Title()}});
    End(log, size);
    return read;
}

Result<void> WorldImporter::ReadAirspaces(const fs::path& path)
{
    const std::uint64_t size = SizeOf(path);
    const Result<std::unique_ptr<TextLines>> lines = Begin(path);
    if (!lines)
        return lines.error();
    ImportLog log((*lines)->Name(), m_callbacks.PassedOver);
    OpenAirRemarks remarks;
    const PartCallback progress = [&](double part) { return m_writer.Status() && Tell((*lines)->Name(), size, part); };
    const Result<void> read = ReadOpenAirFile(
        **lines, log, m_counts.Airspaces, remarks,
        [this](const AirspaceRecord& airspace) { m_records.AddAirspace(airspace); }, progress);
    m_credits.push_back({(*lines)->Name(), std::move(remarks)});
    End(log, size);
    return m_writer.Status() ? read : m_writer.Status();
}

Result<void> WorldImporter::MakeMaps()
{
    Result<void> made = m_maps.Make();
    m_credits.insert(m_credits.end(), m_maps.Credits().begin(), m_maps.Credits().end());
    m_counts.Maps = m_maps.Counts();
    return made;
}

/// The navaids come first: airports take their ILS from them.
Result<void> WorldImporter::ReadAll()
{
    if (!m_import.NavDat.empty()) {
        if (Result<void> read = ReadNav(); !read)
            return read;
    }
    if (!m_import.AptDat.empty()) {
        if (Result<void> read = ReadApt(); !read)
            return read;
    }
    for (const fs::path& path : m_airspaces) {
        if (Result<void> read = ReadAirspaces(path); !read)
            return read;
    }
    m_writer.Append(m_records);
    if (!m_writer.Status())
        return m_writer.Status();
    return MakeMaps();
}

SettingsRecord WorldImporter::Settings() const
{
    SettingsRecord settings;
    settings.FsVersion = Fs2002Version;
    settings.FsPath = m_home.Text;
    settings.AirportCount = m_counts.Records.Airports;
    settings.AirspaceCount = m_counts.Records.Airspaces;
    settings.VorCount = m_counts.Records.Vors;
    settings.NdbCount = m_counts.Records.Ndbs;
    return settings;
}

/// Gives the new files the place of the old ones. Until the new settings are there, the folder must not look complete.
Result<void> WorldImporter::Replace(AtomicFile& settings, AtomicFile& credits)
{
    DeleteFile(m_folder / SettingsFileName);
    Result<void> done = m_writer.Commit();
    if (done)
        done = credits.Commit();
    if (done)
        done = settings.Commit();
    if (!done)
        DeleteDataFiles(m_folder);
    return done;
}

Result<void> WorldImporter::Commit()
{
    m_counts.Records = m_writer.Counts();
    AtomicFile settings(m_folder / SettingsFileName);
    AtomicFile credits(m_folder / CreditsFileName);
    static_cast<void>(settings.Open()); // the first error is kept
    settings.Write(EncodeSettings(Settings()));
    if (!settings.Status())
        return settings.Status();
    const std::string text = CreditsText(m_credits);
    static_cast<void>(credits.Open());
    credits.Write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    if (!credits.Status())
        return credits.Status();
    if (!m_keepsMagdec) {
        const fs::path scenery = m_home.Path / "scenery";
        if (Result<void> made = m_made.Make(scenery); !made)
            return made;
        if (Result<void> written = WriteFileAtomically(scenery / "magdec.bgl", MagdecFile(m_magVar)); !written)
            return written;
    }
    return Replace(settings, credits);
}

Result<WorldImportCounts> WorldImporter::Run()
{
    Result<void> done = Prepare();
    if (done)
        done = ReadAll();
    if (done)
        done = Commit();
    if (!done)
        return done.error();
    m_maps.Keep();
    m_made.Keep();
    m_counts.IlsWithoutAirport = m_localizers.Left();
    return std::move(m_counts);
}

Result<WorldImportCounts> ImportWorld(const WorldImport& import, std::span<const std::int16_t> magVar,
                                      const WorldImportCallbacks& callbacks)
{
    const auto importer = std::make_unique<WorldImporter>(import, magVar, callbacks); // it holds the grid
    return importer->Run();
}
} // namespace corvane
