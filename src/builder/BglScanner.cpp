#include "builder/BglScanner.h"

#include "builder/AirportDecoder.h"
#include "builder/AirspaceDecoder.h"
#include "builder/BglScan.h"
#include "builder/NavaidDecoder.h"
#include "core/BglTags.h"
#include "core/File.h"
#include "core/NumberText.h"
#include "core/OpenFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <system_error>

namespace corvane {
static constexpr std::uint32_t ChainsMark = 0x87654321;

namespace {
struct BglSections {
    std::int32_t Vors = 0; ///< offsets from the file's start; below 1 where there are none
    std::int32_t Ndbs = 0;
    bool Chains = false;
};
} // namespace

/// A header cut off by the file's end names nothing there.
static BglSections ReadSections(ByteSpan file) noexcept
{
    const auto word = [file](std::size_t at) {
        ByteReader reader(file.subspan(std::min(at, file.size())));
        return reader.ReadI32();
    };
    return {word(0x12), word(0x4E), static_cast<std::uint32_t>(word(0x76)) == ChainsMark};
}

bool BglOfInterest(ByteSpan header) noexcept
{
    const BglSections sections = ReadSections(header);
    return sections.Vors >= 1 || sections.Ndbs >= 1 || sections.Chains;
}

/// One entry of an airport directory at e.
static void ScanDirectoryEntry(BglScan& scan, std::int64_t e, const BglRecordHead& head)
{
    BglReader& reader = scan.Reader;
    const std::int32_t kind = reader.ReadI32(e + 8);
    const std::int64_t data = reader.ReadI32(e + 12);
    if (head.Tag != BglTag::DirectoryEntry || scan.Stopped())
        return;
    const std::string name = scan.ReadText(e + 16, head.ContentSize - 8);
    const std::int32_t w0 = reader.ReadI32(data);
    reader.ReadI32(data + 4);
    const std::int32_t w2 = reader.ReadI32(data + 8);
    reader.ReadI32(data + 12);
    if (!scan.Stopped() && kind == BglTag::AirportEntry && data >= 1 && w0 == 1 && w2 == 1)
        DecodeAirport(scan, data, name);
}

static void ScanDirectory(BglScan& scan, std::int64_t p)
{
    constexpr std::int64_t EntryHead = 16;
    const std::int32_t count = scan.Reader.ReadI32(p + 20);
    std::int64_t e = p + 24;
    for (std::int32_t i = 0; i < count && e < scan.Reader.End(); ++i) { // past the end every entry is blank
        scan.EnterPlace("the airport directory entry", e);
        scan.Budget.Spend(EntryHead);
        const BglRecordHead head = ReadRecordHead(scan, e);
        ScanDirectoryEntry(scan, e, head);
        const std::optional<std::int64_t> next = head.Next(e);
        if (scan.Stopped() || !next)
            return;
        e = *next;
    }
}

/// Returns the place of the first record that is no directory, or nothing where the chain is over.
static std::optional<std::int64_t> WalkAirportChain(BglScan& scan, std::int64_t p)
{
    while (true) {
        scan.EnterPlace("the airport chain's record", p);
        const BglRecordHead head = ReadRecordHead(scan, p);
        if (scan.Stopped() || head.Tag != BglTag::Directory)
            return p;
        ScanDirectory(scan, p);
        const std::optional<std::int64_t> next = head.Next(p);
        if (scan.Stopped() || !next)
            return std::nullopt;
        p = *next;
    }
}

static void WalkBoundaryChain(BglScan& scan, std::int64_t p)
{
    std::optional<std::int64_t> at = p;
    while (at && !scan.Stopped()) {
        scan.EnterPlace("the boundary chain's record", *at);
        const BglRecordHead head = ReadRecordHead(scan, *at);
        if (head.Tag == BglTag::Directory) {
            at = WalkAirportChain(scan, *at);
        } else if (head.Tag == BglTag::Wrapper) {
            if (scan.Reader.ReadI32(*at + 8) == BglTag::BoundaryList)
                WalkBoundaryList(scan, *at + 16);
            at = head.Next(*at);
        } else {
            return;
        }
    }
}

static void ScanNewSections(BglScan& scan)
{
    BglReader& reader = scan.Reader;
    if (reader.ReadI32(0x90) != 1)
        return;
    const std::int32_t airports = reader.ReadI32(0x9C);
    const std::int32_t boundaries = reader.ReadI32(0xA4);
    if (airports > 0 && !scan.Stopped())
        WalkAirportChain(scan, airports);
    if (boundaries > 0 && !scan.Stopped())
        WalkBoundaryChain(scan, boundaries);
}

static std::string StopReason(const BglScan& scan)
{
    if (scan.Budget.Exhausted() || scan.BlanksLeft < 0)
        return "names its records over and over: stopped in " + std::string(scan.Place) + " at byte " +
               NumberText(scan.PlaceAt) + " of " + NumberText(scan.Reader.Size());
    return std::string(scan.Place) + " at byte " + NumberText(scan.PlaceAt) + " leads outside the file's " +
           NumberText(scan.Reader.Size()) + " bytes";
}

Result<void> ScanBgl(ByteSpan file, const MagVarGrid& grid, DatabaseSink& sink, std::string_view fileName,
                     ScanProblems* problems)
{
    const BglSections sections = ReadSections(file);
    BglScan scan(file, grid, sink);
    scan.Problems = problems;
    if (sections.Vors > 0)
        ScanVorSection(scan, sections.Vors);
    if (sections.Ndbs > 0 && !scan.Stopped())
        ScanNdbSection(scan, sections.Ndbs);
    if (sections.Chains && !scan.Stopped())
        ScanNewSections(scan);
    if (!scan.Stopped())
        return {};
    if (problems != nullptr)
        problems->Add(scan.PlaceAt, StopReason(scan));
    return Fail(std::string(fileName), StopReason(scan));
}

static Error FileError(const std::filesystem::path& path)
{
    return Fail(FullName(path), std::generic_category().message(errno));
}

Result<BglFileLoader::Loaded> BglFileLoader::Load(const std::filesystem::path& path, std::uint64_t wholeUpTo)
{
    m_size = 0;
    const Result<OpenedFile> opened = OpenRegularFile(path);
    if (!opened)
        return opened.error();
    std::FILE* const file = opened->File.get();
    std::array<std::uint8_t, BglHeaderSize> header{};
    const std::size_t headerSize = std::fread(header.data(), 1, header.size(), file);
    if (std::ferror(file) != 0)
        return FileError(path);
    if (!BglOfInterest(ByteSpan(header).first(headerSize)))
        return Loaded::NotOfInterest;
    if (opened->Size > static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max()))
        return Fail(FullName(path), "is larger than the 2 GB that its offsets can reach");
    if (opened->Size > wholeUpTo)
        return Loaded::TooLarge;
    const std::size_t size = std::max(static_cast<std::size_t>(opened->Size), headerSize);
    if (m_bytes.size() < size)
        m_bytes.resize(size);
    std::copy_n(header.begin(), headerSize, m_bytes.begin());
    m_size = headerSize + std::fread(m_bytes.data() + headerSize, 1, size - headerSize, file);
    if (std::ferror(file) != 0)
        return FileError(path);
    return Loaded::Whole;
}

Result<void> ScanBglFile(const std::filesystem::path& path, const MagVarGrid& grid, DatabaseSink& sink,
                         ScanProblems* problems)
{
    BglFileLoader loader;
    const Result<BglFileLoader::Loaded> loaded = loader.Load(path, std::numeric_limits<std::uint64_t>::max());
    if (!loaded) {
        if (problems != nullptr)
            problems->Add(0, loaded.error().Why);
        return loaded.error();
    }
    if (*loaded == BglFileLoader::Loaded::NotOfInterest)
        return {};
    return ScanBgl(loader.Content(), grid, sink, FullName(path), problems);
}
} // namespace corvane
