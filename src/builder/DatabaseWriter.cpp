#include "builder/DatabaseWriter.h"

#include "core/DatabaseFiles.h"
#include "core/File.h"

#include <cassert>

namespace corvane {
void DatabaseWriter::Note(const Result<void>& outcome)
{
    if (m_status)
        m_status = outcome;
}

void DatabaseWriter::NoteTooLarge(std::string_view name)
{
    Note(Fail(FullName(m_folder / name), "would exceed the 2 GB that its record positions can name"));
}

Result<void> DatabaseWriter::Open()
{
    const auto names = DatabaseFileNames();
    for (std::size_t i = 0; i < m_outputs.size(); ++i)
        Note(m_outputs[i].File.emplace(m_folder / names[i]).Open());
    return m_status;
}

void DatabaseWriter::Write(Output& output, ByteSpan bytes)
{
    if (!m_status || bytes.empty())
        return;
    assert(output.File); // Open comes first, and nothing after Commit and Abandon
    output.File->Write(bytes);
    Note(output.File->Status());
    output.Size += static_cast<std::int64_t>(bytes.size());
}

void DatabaseWriter::Append(EncodedRecords& records)
{
    if (!records.MoveAirports(m_airports.Size))
        NoteTooLarge(AirportsFileName);
    if (!records.MoveAirspaces(m_airspaces.Size))
        NoteTooLarge(AirspacesFileName);
    Write(m_airports, records.Airports);
    Write(m_vors, records.Vors);
    Write(m_ndbs, records.Ndbs);
    Write(m_airspaces, records.Airspaces);
    m_counts.Airports += records.Counts.Airports;
    m_counts.Vors += records.Counts.Vors;
    m_counts.Ndbs += records.Counts.Ndbs;
    m_counts.Airspaces += records.Counts.Airspaces;
    records.Clear();
}

Result<void> DatabaseWriter::Commit()
{
    for (Output& output : m_outputs) {
        assert(output.File);
        Note(output.File->Close());
    }
    for (Output& output : m_outputs) {
        if (m_status)
            Note(output.File->Commit());
    }
    if (!m_status) {
        for (const std::string_view name : DatabaseFileNames())
            DeleteFile(m_folder / name);
        Abandon();
    }
    return m_status;
}

void DatabaseWriter::Abandon() noexcept
{
    for (Output& output : m_outputs)
        output.File.reset();
}
} // namespace corvane
