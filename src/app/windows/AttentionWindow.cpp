#include "app/windows/AttentionWindow.h"

#include "core/windows/QtText.h"
#include "ui_AttentionWindow.h"

#include <QCheckBox>
#include <QPushButton>
#include <QShortcut>

#include <cassert>

namespace corvane {
/// "soundChat", "flashJoin": the control of a sign.
static QString ControlName(const QString& prefix, AttentionSign sign)
{
    QString name = ToQString(AttentionSignName(sign));
    name[0] = name[0].toUpper();
    return prefix + name;
}

AttentionWindow::AttentionWindow(AttentionOptions& options, QWidget* parent)
    : QWidget(parent, Qt::Dialog), m_ui(std::make_unique<Ui::AttentionForm>())
{
    m_ui->setupUi(this);
    Connect(options.Sound, "sound");
    Connect(options.Flash, "flash");
    for (std::size_t i = 0; i < AttentionSignCount; ++i) {
        const auto sign = static_cast<AttentionSign>(i);
        auto* const button = findChild<QPushButton*>(ControlName("try", sign));
        assert(button != nullptr);
        connect(button, &QPushButton::clicked, this, [this, sign] { emit TryRequested(sign); });
    }
    connect(m_ui->CloseButton, &QPushButton::clicked, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

AttentionWindow::~AttentionWindow() = default;

void AttentionWindow::Connect(std::array<bool, AttentionSignCount>& wanted, const QString& prefix)
{
    for (std::size_t i = 0; i < AttentionSignCount; ++i) {
        auto* const box = findChild<QCheckBox*>(ControlName(prefix, static_cast<AttentionSign>(i)));
        assert(box != nullptr);
        box->setChecked(wanted[i]);
        connect(box, &QCheckBox::toggled, this, [this, &flag = wanted[i]](bool on) {
            flag = on;
            emit Changed();
        });
    }
}
} // namespace corvane
