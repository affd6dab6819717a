#include "app/windows/NoticeLine.h"

#include "area/Terrain.h"
#include "area/WorldOutlines.h"
#include "core/File.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

namespace corvane {
static QString DismissedKey(const QString& key)
{
    return "dismissed/" + key;
}

NoticeLine::NoticeLine(DeskSettings& desk, QFrame& bar, QLabel& text, QPushButton& dismiss)
    : m_desk(desk), m_bar(bar), m_text(text)
{
    connect(&dismiss, &QPushButton::clicked, this, &NoticeLine::Dismiss);
    ShowFirst();
}

void NoticeLine::Tell(const QString& key, const QString& text)
{
    if (text.isEmpty() || (!key.isEmpty() && m_desk.Flag(DismissedKey(key), false)))
        return;
    m_notices.push_back({key, text});
    ShowFirst();
}

void NoticeLine::Dismiss()
{
    if (m_notices.empty())
        return;
    if (!m_notices.front().Key.isEmpty())
        m_desk.Keep(DismissedKey(m_notices.front().Key), true);
    m_notices.erase(m_notices.begin());
    ShowFirst();
}

void NoticeLine::ShowFirst()
{
    m_bar.setVisible(!m_notices.empty());
    m_text.setText(m_notices.empty() ? QString() : m_notices.front().Text);
}

void TellMissingMaps(NoticeLine& notices, const std::filesystem::path& folder)
{
    struct Map {
        std::string_view File;
        const char* Lacks;
    };
    for (const Map& map :
         {Map{WorldMapFileName, "No coastlines"}, Map{TerrainFileName, "No terrain for minimum altitudes"}}) {
        const QString file = ToQString(map.File);
        if (!FileExists(folder / map.File))
            notices.Tell(file,
                         QStringLiteral("%1: there is no %2. The guide's chapter \"Making map files\" tells how to "
                                        "get it.")
                             .arg(map.Lacks, file));
    }
}
} // namespace corvane
