#include "cli/ProgressBar.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "core/Text.h"

#include <algorithm>

namespace corvane {
static constexpr auto ShowEvery = std::chrono::milliseconds(100);

ProgressBar::ProgressBar(std::ostream& out, bool onTerminal, std::string unit)
    : m_out(out), m_onTerminal(onTerminal), m_unit(std::move(unit)), m_start(Clock::now()), m_lastShown(m_start)
{
}

ProgressBar::~ProgressBar()
{
    if (m_shown)
        m_out << "\r\x1b[K" << std::flush;
}

void ProgressBar::Show(std::int64_t done, std::int64_t total, const std::string& what, Clock::time_point now)
{
    if (!m_onTerminal || total <= 0 || (m_shown && now - m_lastShown < ShowEvery))
        return;
    m_shown = true;
    m_lastShown = now;
    constexpr std::int64_t Width = 30;
    const std::int64_t filled = std::clamp<std::int64_t>(Width * done / total, 0, Width);
    const double seconds = std::chrono::duration<double>(now - m_start).count();
    const double perSecond = seconds > 0 ? static_cast<double>(done) / seconds : 0;
    std::string line = "\r\x1b[K[" + std::string(static_cast<std::size_t>(filled), '#') +
                       std::string(static_cast<std::size_t>(Width - filled), '.') + "] ";
    line += NumberText(done) + "/" + NumberText(total) + " " + m_unit;
    if (perSecond > 0) {
        line += ", " + NumberText(RoundTo<std::int32_t>(perSecond)) + " a second, ";
        line += NumberText(RoundTo<std::int32_t>(static_cast<double>(total - done) / perSecond)) + " s left";
    }
    m_out << line << "  " << TerminalText(what) << std::flush;
}
} // namespace corvane
