#include "cli/ScopePng.h"

#include "core/AtomicFile.h"
#include "core/File.h"
#include "radar/RedrawCycle.h"
#include "radar/paint/QtMessages.h"
#include "radar/paint/QtRaster.h"

#include <QBuffer>
#include <QGuiApplication>

#include <array>
#include <string>

namespace corvane {
Result<void> WriteScopePng(const std::filesystem::path& path, const MapScene& scene, ColourScheme colours,
                           const std::function<void(Surface&)>& drawOver)
{
    qInstallMessageHandler(ShowQtMessage);
    qputenv("QT_QPA_PLATFORM", "offscreen"); // fonts need a running application, not a display
    std::string name = "corvane-cli";
    int argc = 1;
    std::array<char*, 2> argv = {name.data(), nullptr};
    const QGuiApplication application(argc, argv.data());

    const ScopeFont font = MakeScopeFont(ScopeQFont());
    RedrawCycle painter(font);
    painter.DrawMap(scene, colours);
    drawOver(painter.Scope());

    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!BorrowAsQImage(painter.Picture()).save(&buffer, "PNG"))
        return Fail(FullName(path), "the picture cannot be encoded");
    return WriteFileAtomically(
        path, {reinterpret_cast<const std::uint8_t*>(png.constData()), static_cast<std::size_t>(png.size())});
}
} // namespace corvane
