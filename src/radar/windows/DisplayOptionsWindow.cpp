#include "radar/windows/DisplayOptionsWindow.h"

#include "core/windows/QtText.h"
#include "ui_DisplayOptionsWindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QShortcut>
#include <QSpinBox>

#include <cassert>

namespace corvane {
static QString NameOf(const DisplayOption& option)
{
    return ToQString(option.Name);
}

/// The names of the choices; or, for a number that skips one, each number.
static void FillChoices(QComboBox& box, const DisplayOption& option)
{
    for (double value = option.Lowest; value <= option.Highest; ++value)
        if (option.Takes(value))
            box.addItem(option.Choices.empty() ? QString::number(value)
                                               : ToQString(option.Choices[static_cast<std::size_t>(value)]),
                        value);
}

DisplayOptionsWindow::DisplayOptionsWindow(DisplayOptions& options, ControlMode mode, QWidget* parent)
    : QWidget(parent, Qt::Dialog), m_ui(std::make_unique<Ui::DisplayOptionsForm>()), m_options(options)
{
    m_ui->setupUi(this);
    for (const DisplayOption& option : AllDisplayOptions())
        Connect(option);
    ShowOptions();
    connect(m_ui->ClassicButton, &QPushButton::clicked, this, [this] { TakeSet(ClassicDisplay()); });
    connect(m_ui->ModernButton, &QPushButton::clicked, this, [this, mode] { TakeSet(ModernDisplay(mode)); });
    connect(m_ui->CloseButton, &QPushButton::clicked, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

DisplayOptionsWindow::~DisplayOptionsWindow() = default;

void DisplayOptionsWindow::Connect(const DisplayOption& option)
{
    auto* const control = findChild<QWidget*>(NameOf(option));
    assert(control != nullptr);
    control->setToolTip(ToQString(std::string(option.Help) + ": " + option.Range()));
    if (auto* const box = qobject_cast<QComboBox*>(control)) {
        FillChoices(*box, option);
        connect(box, &QComboBox::currentIndexChanged, this,
                [this, &option, box] { Change(option, box->currentData().toDouble()); });
    } else if (auto* const check = qobject_cast<QCheckBox*>(control)) {
        connect(check, &QCheckBox::toggled, this, [this, &option](bool on) { Change(option, on ? 1 : 0); });
    } else if (auto* const spin = qobject_cast<QSpinBox*>(control)) {
        spin->setRange(static_cast<int>(option.Lowest), static_cast<int>(option.Highest));
        spin->setSingleStep(option.Highest > 1000 ? 100 : 1);
        connect(spin, &QSpinBox::valueChanged, this, [this, &option](int value) { Change(option, value); });
    } else if (auto* const fraction = qobject_cast<QDoubleSpinBox*>(control)) {
        fraction->setRange(option.Lowest, option.Highest);
        fraction->setDecimals(1);
        fraction->setSingleStep(0.5);
        connect(fraction, &QDoubleSpinBox::valueChanged, this,
                [this, &option](double value) { Change(option, value); });
    }
}

void DisplayOptionsWindow::Change(const DisplayOption& option, double value)
{
    if (m_showing)
        return;
    option.Set(m_options, value);
    emit Changed();
}

void DisplayOptionsWindow::TakeSet(const DisplayOptions& set)
{
    m_options = set;
    ShowOptions();
    emit Changed();
}

void DisplayOptionsWindow::ShowOptions()
{
    m_showing = true;
    for (const DisplayOption& option : AllDisplayOptions()) {
        const double value = option.Get(m_options);
        auto* const control = findChild<QWidget*>(NameOf(option));
        if (auto* const box = qobject_cast<QComboBox*>(control))
            box->setCurrentIndex(box->findData(value));
        else if (auto* const check = qobject_cast<QCheckBox*>(control))
            check->setChecked(value != 0);
        else if (auto* const spin = qobject_cast<QSpinBox*>(control))
            spin->setValue(static_cast<int>(value));
        else if (auto* const fraction = qobject_cast<QDoubleSpinBox*>(control))
            fraction->setValue(value);
    }
    m_showing = false;
}
} // namespace corvane
