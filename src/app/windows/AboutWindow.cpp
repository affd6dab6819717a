#include "app/windows/AboutWindow.h"

#include "core/windows/WindowManners.h"
#include "ui_AboutWindow.h"

#include <QShortcut>

namespace corvane {
AboutWindow::AboutWindow(const QString& mapCredits) : m_ui(std::make_unique<Ui::Form7>())
{
    m_ui->setupUi(this);
    m_ui->MapCredits->setPlainText(mapCredits);
    m_ui->MapData->setVisible(!mapCredits.isEmpty());
    PressOnReturn(*this, m_ui->Command1);
    connect(m_ui->Command1, &QPushButton::clicked, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

AboutWindow::~AboutWindow() = default;

void AboutWindow::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit Closed();
}
} // namespace corvane
