#include "world/ImportLog.h"

#include <utility>

namespace corvane {
void ImportLog::PassOver(std::int64_t line, std::string why, bool ofAirspace)
{
    const PassedLine passed{m_file, line, std::move(why), ofAirspace};
    if (++m_passed.Count == 1)
        m_passed.First = passed;
    if (m_tell)
        m_tell(passed);
}
} // namespace corvane
