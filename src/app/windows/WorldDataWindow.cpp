#include "app/windows/WorldDataWindow.h"

#include "app/AppState.h"
#include "core/windows/QtText.h"
#include "demo/DemoWorld.h"
#include "ui_WorldDataWindow.h"
#include "world/FlightGearFiles.h"

#include <QCloseEvent>
#include <QFileDialog>

namespace corvane {
static constexpr int LookIntervalMs = 100;
static constexpr char Separator = ';'; // between the names of several files

static QString ShownPath(const std::filesystem::path& path)
{
    return QString::fromStdString(path.string());
}

static std::filesystem::path PathOf(const QString& text)
{
    return text.trimmed().toStdString();
}

static MapSources MapsThere(const AppState& state)
{
    return FindMapSources(state.AppFolder, DefaultDataFolder(), FindFlightGear().value_or(std::filesystem::path()));
}

WorldDataWindow::WorldDataWindow(AppState& state, MessageBoxes& boxes)
    : m_ui(std::make_unique<Ui::WorldDataForm>()), m_state(state), m_boxes(boxes)
{
    m_ui->setupUi(this);
    if (const auto folder = FindFlightGear()) {
        const FlightGearFiles files = FilesOfFlightGear(*folder);
        m_ui->Airports->setText(ShownPath(files.AptDat));
        m_ui->Navaids->setText(ShownPath(files.NavDat));
        m_ui->Hint->setText(tr("FlightGear's data were found. Other files will do as well."));
    }
    m_ui->Maps->setText(ToQString(MapSourcesText(MapsThere(m_state))));
    connect(m_ui->BrowseAirports, &QPushButton::clicked, this, [this] { BrowseInto(*m_ui->Airports, false); });
    connect(m_ui->BrowseNavaids, &QPushButton::clicked, this, [this] { BrowseInto(*m_ui->Navaids, false); });
    connect(m_ui->BrowseAirspaces, &QPushButton::clicked, this, [this] { BrowseInto(*m_ui->Airspaces, true); });
    connect(m_ui->Airports, &QLineEdit::textChanged, this, &WorldDataWindow::ShowWhetherReady);
    connect(m_ui->Create, &QPushButton::clicked, this, &WorldDataWindow::Begin);
    connect(m_ui->Back, &QPushButton::clicked, this, &QWidget::close);
    m_look.setInterval(LookIntervalMs);
    connect(&m_look, &QTimer::timeout, this, &WorldDataWindow::Look);
    ShowWhetherReady();
}

WorldDataWindow::~WorldDataWindow() = default;

void WorldDataWindow::BrowseInto(QLineEdit& line, bool several)
{
    if (several) {
        const QStringList files = QFileDialog::getOpenFileNames(this, windowTitle(), line.text());
        if (!files.isEmpty())
            line.setText(files.join(QLatin1Char(Separator)));
        return;
    }
    const QString file = QFileDialog::getOpenFileName(this, windowTitle(), line.text());
    if (!file.isEmpty())
        line.setText(file);
}

/// The scope needs airports; the rest is welcome.
void WorldDataWindow::ShowWhetherReady()
{
    m_ui->Create->setEnabled(!m_job && !m_ui->Airports->text().trimmed().isEmpty());
    m_ui->Files->setEnabled(!m_job);
}

void WorldDataWindow::Begin()
{
    WorldImport import;
    import.AptDat = PathOf(m_ui->Airports->text());
    import.NavDat = PathOf(m_ui->Navaids->text());
    const QStringList airspaces = m_ui->Airspaces->text().split(QLatin1Char(Separator), Qt::SkipEmptyParts);
    for (const QString& file : airspaces)
        import.Airspaces.push_back(PathOf(file));
    import.Apt.Pavements = m_ui->Pavements->isChecked();
    import.AppFolder = m_state.AppFolder;
    import.Maps = MapsThere(m_state);
    m_job = std::make_unique<WorldDataModel>(std::move(import), DefaultDataFolder());
    ShowWhetherReady();
    m_look.start();
}

void WorldDataWindow::Look()
{
    const WorldImportProgress progress = m_job->Progress();
    m_ui->Progress->setValue(static_cast<int>(progress.Done * m_ui->Progress->maximum()));
    m_ui->Reading->setText(QString::fromStdString(progress.File));
    if (m_job->Outcome() != nullptr) {
        m_look.stop();
        End();
    }
}

void WorldDataWindow::End()
{
    const std::unique_ptr<WorldDataModel> job = std::move(m_job);
    const Result<WorldImportCounts>& counts = *job->Outcome();
    const Result<void> used = counts ? UseNewDatabase(m_state) : counts.error();
    m_ui->Progress->setValue(0);
    m_ui->Reading->clear();
    ShowWhetherReady();
    if (!used) {
        m_boxes.Warn(BoxText(used.error()));
        return;
    }
    m_over = true;
    m_boxes.Inform(WorldDataText(*counts));
    hide();
    emit Finished();
}

void WorldDataWindow::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    if (m_over)
        return;
    m_over = true;
    m_look.stop();
    m_job.reset(); // stops it; the folder is as it was
    emit LeftUndone();
}
} // namespace corvane
