#include "world/AptFile.h"

#include "world/AirportDraft.h"

#include <optional>
#include <unordered_set>

namespace corvane {
namespace {
/// Gathers the rows of each airport, and hands the airport on when the next one begins.
class AirportWalk {
public:
    AirportWalk(RowFile& rows, const AptOptions& options, const MagVarGrid& grid, LocalizerTable& localizers,
                ImportLog& log, AirportsLeftOut& leftOut,
                const std::function<Result<void>(const AirportRecord&)>& sink) noexcept
        : m_rows(rows),
          m_options(options),
          m_grid(grid),
          m_localizers(localizers),
          m_log(log),
          m_leftOut(leftOut),
          m_sink(sink)
    {
    }

    Result<void> TakeRow();
    /// Hands on the airport at hand.
    Result<void> EndAirport();
    [[nodiscard]] bool AnyAirport() const noexcept { return m_anyAirport; }

private:
    void BeginAirport();

    RowFile& m_rows;
    const AptOptions& m_options;
    const MagVarGrid& m_grid;
    LocalizerTable& m_localizers;
    ImportLog& m_log;
    AirportsLeftOut& m_leftOut;
    const std::function<Result<void>(const AirportRecord&)>& m_sink;
    std::optional<AirportDraft> m_draft; ///< none while the rows of an airport are passed by
    std::unordered_set<std::string> m_codes;
    bool m_anyAirport = false;
    bool m_anyHeader = false; ///< readable or not
};
} // namespace

void AirportWalk::BeginAirport()
{
    m_anyHeader = true;
    RowReader row = m_rows.Fields();
    AirportHeader header = ReadAirportHeader(row);
    if (m_rows.PassedOver(row))
        return;
    m_anyAirport = true;
    if (IsClosed(header.Name))
        ++m_leftOut.Closed;
    else
        m_draft.emplace(std::move(header), m_grid, m_options.Pavements);
}

Result<void> AirportWalk::EndAirport()
{
    if (!m_draft)
        return {};
    const std::string icao = m_draft->Icao();
    const std::string headerCode = m_draft->HeaderCode();
    std::optional<AirportRecord> airport = m_draft->Finish(m_log);
    m_leftOut.PavementPoints += m_draft->PavementPointsLeftOut();
    m_draft.reset();
    if (!airport) {
        ++m_leftOut.WithoutPlace;
        return {};
    }
    if (!m_codes.insert(icao).second) {
        ++m_leftOut.Repeated;
        return {};
    }
    airport->Ils = m_localizers.Take(*airport, headerCode, m_grid);
    return m_sink(*airport);
}

Result<void> AirportWalk::TakeRow()
{
    constexpr int LandAirport = 1;
    constexpr int SeaplaneBase = 16;
    constexpr int Heliport = 17;
    const int code = m_rows.Code();
    if (code == LandAirport || code == SeaplaneBase || code == Heliport) {
        if (Result<void> ended = EndAirport(); !ended)
            return ended;
        BeginAirport();
        return {};
    }
    RowReader row = m_rows.Fields();
    if (m_draft)
        m_draft->Take(code, row, m_rows.LineNumber());
    else if (!m_anyHeader)
        row.Refuse("stands before the first airport");
    static_cast<void>(m_rows.PassedOver(row));
    return {};
}

Result<void> ReadAptFile(RowFile& rows, const AptOptions& options, const MagVarGrid& grid, LocalizerTable& localizers,
                         ImportLog& log, AirportsLeftOut& leftOut,
                         const std::function<Result<void>(const AirportRecord&)>& sink)
{
    if (Result<void> head = rows.ReadHead(); !head)
        return head;
    AirportWalk walk(rows, options, grid, localizers, log, leftOut, sink);
    while (rows.Next()) {
        if (Result<void> taken = walk.TakeRow(); !taken)
            return taken;
    }
    if (Result<void> finished = rows.Finish(); !finished)
        return finished;
    if (!walk.AnyAirport())
        return Fail(rows.Name(), "holds no airport: it is another kind of file");
    return walk.EndAirport();
}
} // namespace corvane
