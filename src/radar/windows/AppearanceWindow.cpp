#include "radar/windows/AppearanceWindow.h"

#include "radar/paint/QtRaster.h"
#include "ui_AppearanceWindow.h"

#include <QApplication>
#include <QShortcut>

#include <array>

namespace corvane {
static constexpr std::array<int, 7> ScalePercents = {100, 125, 150, 175, 200, 250, 300};

AppearanceWindow::AppearanceWindow(Appearance& appearance, QWidget* parent)
    : QWidget(parent, Qt::Dialog), m_ui(std::make_unique<Ui::AppearanceForm>()), m_appearance(appearance)
{
    m_ui->setupUi(this);
    m_ui->ScopeTextPx->setRange(ScopeTextSizes.Lowest, ScopeTextSizes.Highest);
    m_ui->LineWidth->setRange(LineWidths.Lowest, LineWidths.Highest);
    m_ui->WindowTextPt->setRange(WindowTextSizes.Lowest, WindowTextSizes.Highest);
    for (const int percent : ScalePercents)
        m_ui->InterfacePercent->addItem(tr("%1 %").arg(percent), percent);
    ShowAppearance();
    connect(m_ui->Colours, &QComboBox::currentIndexChanged, this, &AppearanceWindow::TakeControls);
    connect(m_ui->ScopeFont, &QFontComboBox::currentFontChanged, this, &AppearanceWindow::TakeControls);
    connect(m_ui->ScopeTextPx, &QSpinBox::valueChanged, this, &AppearanceWindow::TakeControls);
    connect(m_ui->LineWidth, &QSpinBox::valueChanged, this, &AppearanceWindow::TakeControls);
    connect(m_ui->OwnWindowFont, &QCheckBox::toggled, this, &AppearanceWindow::TakeControls);
    connect(m_ui->WindowFont, &QFontComboBox::currentFontChanged, this, &AppearanceWindow::TakeControls);
    connect(m_ui->WindowTextPt, &QSpinBox::valueChanged, this, &AppearanceWindow::TakeControls);
    connect(m_ui->InterfacePercent, &QComboBox::currentIndexChanged, this, &AppearanceWindow::TakeControls);
    connect(m_ui->AsBefore, &QPushButton::clicked, this, [this] {
        m_appearance = {};
        ShowAppearance();
        emit Changed();
    });
    connect(m_ui->CloseButton, &QPushButton::clicked, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

AppearanceWindow::~AppearanceWindow() = default;

void AppearanceWindow::ShowAppearance()
{
    m_showing = true;
    m_ui->Colours->setCurrentIndex(static_cast<int>(m_appearance.Colours));
    m_ui->ScopeFont->setCurrentFont(ScopeQFont(QString::fromStdString(m_appearance.ScopeFont), 0, 1));
    m_ui->ScopeTextPx->setValue(m_appearance.ScopeTextPx);
    m_ui->LineWidth->setValue(m_appearance.LineWidth);
    const bool own = m_appearance.WindowTextPt != 0;
    m_ui->OwnWindowFont->setChecked(own);
    m_ui->WindowFont->setEnabled(own);
    m_ui->WindowTextPt->setEnabled(own);
    if (!m_appearance.WindowFont.empty())
        m_ui->WindowFont->setCurrentFont(QFont(QString::fromStdString(m_appearance.WindowFont)));
    m_ui->WindowTextPt->setValue(own ? m_appearance.WindowTextPt : QApplication::font().pointSize());
    const int scale = m_ui->InterfacePercent->findData(m_appearance.InterfacePercent);
    m_ui->InterfacePercent->setCurrentIndex(scale < 0 ? 0 : scale);
    m_showing = false;
}

void AppearanceWindow::TakeControls()
{
    if (m_showing)
        return;
    const bool own = m_ui->OwnWindowFont->isChecked();
    m_ui->WindowFont->setEnabled(own);
    m_ui->WindowTextPt->setEnabled(own);
    m_appearance.Colours = static_cast<ColourScheme>(m_ui->Colours->currentIndex());
    const QString scopeFont = m_ui->ScopeFont->currentFont().family();
    m_appearance.ScopeFont = scopeFont == ScopeQFont().family() ? std::string() : scopeFont.toStdString();
    m_appearance.ScopeTextPx = m_ui->ScopeTextPx->value();
    m_appearance.LineWidth = m_ui->LineWidth->value();
    m_appearance.WindowFont = own ? m_ui->WindowFont->currentFont().family().toStdString() : std::string();
    m_appearance.WindowTextPt = own ? m_ui->WindowTextPt->value() : 0;
    m_appearance.InterfacePercent = m_ui->InterfacePercent->currentData().toInt();
    emit Changed();
}
} // namespace corvane
