#include "app/windows/AppearanceMemory.h"

#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QSettings>

namespace corvane {
static constexpr const char* ScaleKey = "appearance/interfacePercent";

Appearance ReadAppearance(const DeskSettings& desk)
{
    Appearance look;
    const DisplayOption* const colours = FindDisplayOption("Colours");
    const double scheme = desk.Number("appearance/colours", 0);
    if (colours->Takes(scheme))
        look.Colours = static_cast<ColourScheme>(scheme);
    look.ScopeFont = desk.Text("appearance/scopeFont").toStdString();
    look.ScopeTextPx = ScopeTextSizes.Hold(desk.Number("appearance/scopeTextPx", look.ScopeTextPx));
    look.LineWidth = LineWidths.Hold(desk.Number("appearance/lineWidth", look.LineWidth));
    if (const double points = desk.Number("appearance/windowTextPt", 0); points > 0) {
        look.WindowFont = desk.Text("appearance/windowFont").toStdString();
        look.WindowTextPt = WindowTextSizes.Hold(points);
    }
    look.InterfacePercent = InterfaceScales.Hold(desk.Number(ScaleKey, look.InterfacePercent));
    return look;
}

void KeepAppearance(DeskSettings& desk, const Appearance& look)
{
    desk.Keep("appearance/colours", static_cast<int>(look.Colours));
    desk.Keep("appearance/scopeFont", QString::fromStdString(look.ScopeFont));
    desk.Keep("appearance/scopeTextPx", look.ScopeTextPx);
    desk.Keep("appearance/lineWidth", look.LineWidth);
    desk.Keep("appearance/windowFont", QString::fromStdString(look.WindowFont));
    desk.Keep("appearance/windowTextPt", look.WindowTextPt);
    desk.Keep(ScaleKey, look.InterfacePercent);
}

void ApplyWindowFont(const Appearance& look)
{
    QApplication::setFont(QFontDatabase::systemFont(QFontDatabase::GeneralFont)); // the desktop's
    if (look.WindowTextPt == 0)
        return;
    QFont font = QApplication::font();
    if (!look.WindowFont.empty())
        font.setFamily(QString::fromStdString(look.WindowFont));
    font.setPointSize(look.WindowTextPt);
    QApplication::setFont(font);
}

void ApplyInterfaceScale()
{
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
        return;
    const QSettings file(DeskSettings::DefaultFile(), QSettings::IniFormat);
    bool isNumber = false;
    const double percent = file.value(ScaleKey).toDouble(&isNumber);
    if (isNumber && percent > InterfaceScales.Lowest)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(InterfaceScales.Hold(percent) / 100.0));
}
} // namespace corvane
