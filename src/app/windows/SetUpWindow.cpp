#include "app/windows/SetUpWindow.h"

#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"
#include "ui_SetUpWindow.h"

#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QStorageInfo>
#include <QTimer>

#include <chrono>

namespace corvane {
SetUpWindow::SetUpWindow(AppState& state, MessageBoxes& boxes)
    : m_ui(std::make_unique<Ui::Form3>()), m_folders(new QFileSystemModel(this)), m_setUp(state, boxes)
{
    m_ui->setupUi(this);
    PressOnReturn(*this);
    m_ui->Option1->setChecked(true);
    m_setUp.OptionClicked();
    m_folders->setFilter(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Drives);
    m_folders->setRootPath(QString());
    m_ui->Dir1->setModel(m_folders);
    for (int column = 1; column < m_folders->columnCount(); ++column)
        m_ui->Dir1->hideColumn(column);
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes())
        if (volume.isReady()) // read-only ones too: a simulator's disk need not be written to
            m_ui->Drive1->addItem(QDir::toNativeSeparators(volume.rootPath()));
    connect(m_ui->Option1, &QRadioButton::clicked, this, [this] { m_setUp.OptionClicked(); });
    connect(m_ui->Drive1, &QComboBox::textActivated, this, &SetUpWindow::PointAt);
    connect(m_ui->Dir1, &QTreeView::clicked, this, &SetUpWindow::ChooseFolder);
    connect(m_ui->Dir1, &QTreeView::activated, this, &SetUpWindow::ChooseFolder);
    connect(m_ui->Command2, &QPushButton::clicked, this, &SetUpWindow::Browse);
    connect(m_ui->Text1, &QLineEdit::textChanged, this, &SetUpWindow::PathChanged);
    connect(m_ui->Text1, &QLineEdit::returnPressed, m_ui->Command1, &QPushButton::click);
    connect(m_ui->Command1, &QPushButton::clicked, this, &SetUpWindow::NextStep);
    connect(m_ui->WorldData, &QPushButton::clicked, this, &SetUpWindow::WorldDataRequested);
    connect(m_folders, &QFileSystemModel::directoryLoaded, this, &SetUpWindow::KeepInSight);
    m_ui->Drive1->setCurrentText(QDir::toNativeSeparators(QStorageInfo(QDir::homePath()).rootPath()));
    PointAt(QDir::homePath());
}

SetUpWindow::~SetUpWindow() = default;

/// Opens the list of folders at one of them, and takes it as the path.
void SetUpWindow::PointAt(const QString& folder)
{
    const QModelIndex index = m_folders->index(folder);
    m_ui->Dir1->setCurrentIndex(index);
    m_ui->Dir1->expand(index);
    m_ui->Dir1->scrollTo(index, QAbstractItemView::PositionAtTop);
    m_ui->Text1->setText(QDir::toNativeSeparators(folder));
}

/// Folders are listed in the background, and those that come above the current one would push it out of sight; they
/// are put into their order when the model's timer of 0 ms has run out, after it has told of them.
void SetUpWindow::KeepInSight(const QString& loaded)
{
    constexpr std::chrono::milliseconds BehindTheirOrder(1);
    if (m_folders->filePath(m_ui->Dir1->currentIndex()).startsWith(loaded))
        QTimer::singleShot(BehindTheirOrder, this, [this] {
            m_ui->Dir1->scrollTo(m_ui->Dir1->currentIndex(), QAbstractItemView::PositionAtTop);
        });
}

void SetUpWindow::ChooseFolder(const QModelIndex& index)
{
    m_ui->Text1->setText(QDir::toNativeSeparators(m_folders->filePath(index)));
}

void SetUpWindow::Browse()
{
    const QString folder = QFileDialog::getExistingDirectory(this, windowTitle(), m_ui->Text1->text());
    if (!folder.isEmpty())
        PointAt(folder);
}

void SetUpWindow::PathChanged(const QString& text)
{
    const QString path = QString::fromStdString(SetUpModel::PathAfterChange(text.toStdString()));
    if (path != text)
        m_ui->Text1->setText(path);
}

void SetUpWindow::NextStep()
{
    if (!m_setUp.NextStep(m_ui->Text1->text().toStdString(), m_ui->Option1->isChecked()))
        return;
    hide();
    emit Finished();
}

void SetUpWindow::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    if (m_setUp.Close())
        emit Abandoned();
}
} // namespace corvane
