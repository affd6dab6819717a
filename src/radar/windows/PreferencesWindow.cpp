#include "radar/windows/PreferencesWindow.h"

#include "core/windows/WindowManners.h"
#include "ui_PreferencesWindow.h"

#include <QCheckBox>
#include <QShortcut>

namespace corvane {
PreferencesWindow::PreferencesWindow(DisplayFlags& flags) : m_ui(std::make_unique<Ui::Form10>())
{
    m_ui->setupUi(this);
    PressOnReturn(*this, m_ui->Command1);
    // in the order of DisplayFlagNames, which is the order in the window
    const std::array<QCheckBox*, DisplayFlagNames.size()> boxes = {
        m_ui->Check15, m_ui->Check14, m_ui->Check13, m_ui->Check12, m_ui->Check7, m_ui->Check6, m_ui->Check5,
        m_ui->Check1,  m_ui->Check11, m_ui->Check10, m_ui->Check9,  m_ui->Check8, m_ui->Check2};
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        bool& flag = flags.*DisplayFlagNames[i].Flag;
        boxes[i]->setChecked(flag);
        connect(boxes[i], &QCheckBox::toggled, this, [&flag](bool checked) { flag = checked; });
    }
    connect(m_ui->Command1, &QPushButton::clicked, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

PreferencesWindow::~PreferencesWindow() = default;

void PreferencesWindow::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit Closed();
}
} // namespace corvane
