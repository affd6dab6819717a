#include "cli/HistoryFile.h"

#include "cli/RecordJson.h"
#include "core/File.h"
#include "core/NumberText.h"

#include <cmath>
#include <optional>
#include <utility>

namespace corvane {
static Result<double> TimeOf(const Json& line, std::string_view what)
{
    const auto time = line.find("Time");
    if (time == line.end())
        return 0.0;
    if (!time->is_number())
        return Fail(std::string(what), "Time is not a number");
    const auto seconds = time->get<double>();
    if (!(std::abs(seconds) <= LatestHistoryTime))
        return Fail(std::string(what), "Time is out of range");
    return seconds;
}

Result<HistoryLine> HistoryLineFromJson(std::string_view text, std::string_view what)
{
    const Json parsed = Json::parse(text, nullptr, false);
    if (!parsed.is_object())
        return Fail(std::string(what), "is not a JSON object with Time and Players");
    const Result<double> time = TimeOf(parsed, what);
    if (!time)
        return time.error();
    HistoryLine line{*time, {}};
    const auto players = parsed.find("Players");
    if (players == parsed.end())
        return line;
    auto records = PlayersFromJson(*players, what);
    if (!records)
        return records.error();
    line.Players = std::move(*records);
    return line;
}

Result<void> ReadHistory(std::string_view text, std::string_view what, const std::function<void(HistoryLine)>& take)
{
    std::optional<double> last;
    for (std::int64_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.find_first_not_of(" \t\r") == std::string_view::npos)
            continue;
        const std::string where = std::string(what) + ": line " + NumberText(number);
        Result<HistoryLine> read = HistoryLineFromJson(line, where);
        if (!read)
            return read.error();
        if (last && read->Time < *last)
            return Fail(where, "Time is before that of the line before");
        last = read->Time;
        take(std::move(*read));
    }
    return {};
}

Result<void> ReadHistoryFile(const std::string& fileName, const std::function<void(HistoryLine)>& take)
{
    const Result<FileBytes> file = ReadWholeFile(fileName);
    if (!file)
        return file.error();
    return ReadHistory({reinterpret_cast<const char*>(file->Span().data()), file->Size()}, FullName(fileName), take);
}
} // namespace corvane
