#include "builder/DatabaseWriter.h"

#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/RecordCodec.h"
#include "os/Files.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

namespace corvane {
static constexpr const char* TooLarge = "would exceed the 2 GB that its record positions can name";

static std::string SystemReason()
{
    return std::generic_category().message(errno);
}

std::filesystem::path DatabaseWriter::PartPath(const Output& output) const
{
    std::filesystem::path path = m_folder / output.Name;
    path += ".part";
    return path;
}

void DatabaseWriter::Fail(const Output& output, std::string why)
{
    if (m_status)
        m_status = Error{FullName(m_folder / output.Name), std::move(why)};
}

Result<void> DatabaseWriter::Open()
{
    constexpr std::size_t BufferSize = std::size_t{256} * 1024;
    const auto names = DatabaseFileNames();
    for (std::size_t i = 0; i < m_outputs.size(); ++i) {
        Output& output = m_outputs[i];
        output.Name = names[i];
        output.File.reset(OpenForWriting(PartPath(output)));
        if (!output.File)
            Fail(output, SystemReason());
        else
            static_cast<void>(std::setvbuf(output.File.get(), nullptr, _IOFBF, BufferSize));
    }
    return m_status;
}

void DatabaseWriter::Write(Output& output, ByteSpan bytes)
{
    if (!m_status || bytes.empty())
        return;
    if (std::fwrite(bytes.data(), 1, bytes.size(), output.File.get()) != bytes.size())
        Fail(output, SystemReason());
    output.Size += static_cast<std::int64_t>(bytes.size());
}

void DatabaseWriter::AddAirport(const AirportRecord& record)
{
    m_scratch.clear();
    if (EncodeAirport(m_scratch, record, m_airports.Size + 1) == 0)
        Fail(m_airports, TooLarge);
    Write(m_airports, m_scratch);
    ++m_counts.Airports;
}

void DatabaseWriter::AddVor(const NavaidRecord& record)
{
    m_scratch.clear();
    EncodeNavaid(m_scratch, record);
    Write(m_vors, m_scratch);
    ++m_counts.Vors;
}

void DatabaseWriter::AddNdb(const NavaidRecord& record)
{
    m_scratch.clear();
    EncodeNavaid(m_scratch, record);
    Write(m_ndbs, m_scratch);
    ++m_counts.Ndbs;
}

void DatabaseWriter::AddAirspace(const AirspaceRecord& record)
{
    m_scratch.clear();
    if (EncodeAirspace(m_scratch, record, m_airspaces.Size + 1) == 0)
        Fail(m_airspaces, TooLarge);
    Write(m_airspaces, m_scratch);
    ++m_counts.Airspaces;
}

void DatabaseWriter::Append(EncodedRecords& records)
{
    if (!MoveRecords(records.Airports, m_airports.Size))
        Fail(m_airports, TooLarge);
    if (!MoveRecords(records.Airspaces, m_airspaces.Size))
        Fail(m_airspaces, TooLarge);
    Write(m_airports, records.Airports);
    Write(m_vors, records.Vors);
    Write(m_ndbs, records.Ndbs);
    Write(m_airspaces, records.Airspaces);
    m_counts.Airports += records.Counts.Airports;
    m_counts.Vors += records.Counts.Vors;
    m_counts.Ndbs += records.Counts.Ndbs;
    m_counts.Airspaces += records.Counts.Airspaces;
}

void DatabaseWriter::Close(Output& output)
{
    if (output.File && std::fclose(output.File.release()) != 0) // a full disk may show only here
        Fail(output, SystemReason());
}

void DatabaseWriter::Rename(Output& output)
{
    if (!m_status)
        return;
    std::error_code error;
    std::filesystem::rename(PartPath(output), m_folder / output.Name, error);
    if (error)
        Fail(output, error.message());
}

Result<void> DatabaseWriter::Commit()
{
    for (Output& output : m_outputs)
        Close(output);
    for (Output& output : m_outputs)
        Rename(output);
    if (!m_status) {
        for (const Output& output : m_outputs)
            DeleteFile(m_folder / output.Name);
        Abandon();
    }
    return m_status;
}

void DatabaseWriter::Abandon() noexcept
{
    for (Output& output : m_outputs) {
        output.File.reset();
        if (!output.Name.empty())
            DeleteFile(PartPath(output));
    }
}
} // namespace corvane
