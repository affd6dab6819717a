#include "session/windows/ConnectionWindow.h"

#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"
#include "ui_ConnectionWindow.h"

#include <QAccessible>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyledItemDelegate>

namespace corvane {
namespace {
/// A list's row without the frame of the current one, which looks selected to whoever comes by the keyboard.
class ListRow final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state.setFlag(QStyle::State_HasFocus, false);
    }
};
} // namespace

static constexpr const char* NicknameKey = "connection/nickname";
static constexpr const char* TypeKey = "connection/type";

ConnectionWindow::ConnectionWindow(SessionPeerFactory& factory, SessionState& session, PlayerTable& players,
                                   MessageBoxes& boxes, DeskSettings& desk)
    : m_ui(std::make_unique<Ui::Form2>()), m_desk(desk), m_connection(factory, session, players, *this, boxes)
{
    m_ui->setupUi(this);
    PressOnReturn(*this);
    m_timer1.setObjectName("Timer1");
    m_timer1.setInterval(HandshakeIntervalMs);
    m_timer2.setObjectName("Timer2");
    m_timer2.setInterval(RetryIntervalMs);
    connect(&m_timer1, &QTimer::timeout, this, [this] { m_connection.HandshakeTick(); });
    connect(&m_timer2, &QTimer::timeout, this, [this] { m_connection.RetryTick(); });
    connect(m_ui->Command1, &QPushButton::clicked, this, [this] { m_connection.LocateSession(); });
    connect(m_ui->Command2, &QPushButton::clicked, this, &ConnectionWindow::JoinClicked);
    connect(m_ui->Command3, &QPushButton::clicked, this, [this] { m_connection.Exit(); });
    connect(m_ui->List1, &QListWidget::itemSelectionChanged, this, &ConnectionWindow::TypeChosen);
    m_ui->List1->viewport()->installEventFilter(this);
    connect(m_ui->Check1, &QCheckBox::clicked, this, &ConnectionWindow::HostingClicked);
    connect(m_ui->Combo1, &QComboBox::activated, this, &ConnectionWindow::ScenarioPicked);
    connect(m_ui->List1, &QListWidget::itemActivated, m_ui->Command1, &QPushButton::click);
    connect(m_ui->List2, &QListWidget::itemActivated, m_ui->Command2, &QPushButton::click);
    connect(m_ui->Text1, &QLineEdit::returnPressed, m_ui->Command2, &QPushButton::click);
    connect(m_ui->Text2, &QLineEdit::editingFinished, this, &ConnectionWindow::HostElsewhere);
    for (QListWidget* const list : {m_ui->List1, m_ui->List2})
        list->setItemDelegate(new ListRow(list));
    m_connection.Load();
    Recall();
}

ConnectionWindow::~ConnectionWindow() = default;

/// The selected row. The current one will not do: a list makes its first row current when the keyboard comes to it.
static std::optional<std::size_t> SelectedRow(const QListWidget& list)
{
    const auto selected = list.selectedItems();
    if (selected.isEmpty())
        return std::nullopt;
    return static_cast<std::size_t>(list.row(selected.front()));
}

void ConnectionWindow::TypeChosen()
{
    if (const auto row = SelectedRow(*m_ui->List1))
        m_connection.ConnectionTypeChosen(*row);
    EnableHosting();
}

void ConnectionWindow::Remember()
{
    m_desk.Keep(NicknameKey, m_ui->Text1->text());
    if (const auto row = SelectedRow(*m_ui->List1))
        m_desk.Keep(TypeKey, m_ui->List1->item(static_cast<int>(*row))->text());
}

void ConnectionWindow::Recall()
{
    m_ui->Text1->setText(m_desk.Text(NicknameKey, m_ui->Text1->text()));
    const auto types = m_ui->List1->findItems(m_desk.Text(TypeKey), Qt::MatchExactly);
    if (!types.isEmpty())
        m_ui->List1->setCurrentItem(types.first());
}

/// A click on the type that is selected already starts again, too; no signal tells it from the first half of a
/// double click, whose second half locates sessions.
bool ConnectionWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        const auto* const press = static_cast<QMouseEvent*>(event);
        const QListWidgetItem* const item = m_ui->List1->itemAt(press->position().toPoint());
        if (press->button() == Qt::LeftButton && item != nullptr && item->isSelected())
            TypeChosen();
    }
    return QWidget::eventFilter(watched, event);
}

void ConnectionWindow::OfferHosting(const QString& connectionName, const QString& caption)
{
    m_hostings[connectionName].Caption = caption;
    EnableHosting();
}

void ConnectionWindow::ShowHosting(const QString& connectionName, const QString& address)
{
    m_hostings[connectionName].At = address;
    EnableHosting();
}

QString ConnectionWindow::SelectedType() const
{
    const auto selected = m_ui->List1->selectedItems();
    return selected.isEmpty() ? QString() : selected.front()->text();
}

QString ConnectionWindow::HostedAt() const
{
    const auto hosting = m_hostings.find(SelectedType());
    return hosting == m_hostings.end() ? QString() : hosting->second.At;
}

void ConnectionWindow::EnableHosting()
{
    const auto hosting = m_hostings.find(SelectedType());
    const bool offered = hosting != m_hostings.end() && m_ui->List1->isEnabled();
    for (QWidget* const control : std::initializer_list<QWidget*>{m_ui->Check1, m_ui->Label6, m_ui->Text2})
        control->setEnabled(offered);
    const bool scenarios = !m_scenariosOf.isEmpty() && SelectedType() == m_scenariosOf && m_ui->List1->isEnabled();
    m_ui->Label7->setEnabled(scenarios);
    m_ui->Combo1->setEnabled(scenarios);
    m_ui->Check1->setChecked(!HostedAt().isEmpty());
    if (hosting != m_hostings.end())
        m_ui->Check1->setText(hosting->second.Caption);
    if (!HostedAt().isEmpty())
        m_ui->Text2->setText(HostedAt());
}

void ConnectionWindow::OfferScenarios(const QString& connectionName, const QStringList& names, int chosen)
{
    m_scenariosOf = connectionName;
    m_ui->Combo1->clear();
    m_ui->Combo1->addItem(tr("Pilots come and go"));
    m_ui->Combo1->addItems(names);
    m_ui->Combo1->setCurrentIndex(chosen + 1);
    EnableHosting();
}

void ConnectionWindow::ScenarioPicked(int row)
{
    TypeChosen(); // what was located is a session that ends now
    emit ScenarioWanted(row - 1);
}

void ConnectionWindow::HostingClicked(bool on)
{
    TypeChosen(); // what was located is a session that ends now
    emit HostingWanted(SelectedType(), on ? m_ui->Text2->text().trimmed() : QString());
}

/// The address was changed while the session is hosted.
void ConnectionWindow::HostElsewhere()
{
    const QString address = m_ui->Text2->text().trimmed();
    if (HostedAt().isEmpty() || address == HostedAt() || address.isEmpty())
        return;
    TypeChosen(); // what was located is a session that ends now
    emit HostingWanted(SelectedType(), address);
}

void ConnectionWindow::JoinClicked()
{
    m_connection.JoinSession(SelectedRow(*m_ui->List2), ToText(m_ui->Text1->text()));
}

bool ConnectionWindow::JoinFirstSession(const QString& connectionName)
{
    const auto types = m_ui->List1->findItems(connectionName, Qt::MatchExactly);
    if (types.isEmpty() || !m_ui->Command1->isEnabled())
        return false;
    m_ui->List1->setCurrentItem(types.first());
    m_ui->Command1->click();
    if (m_ui->List2->count() == 0)
        return false;
    m_ui->List2->setCurrentRow(0);
    m_ui->Command2->click();
    return true;
}

void ConnectionWindow::Locate()
{
    m_ui->Command1->click();
}

void ConnectionWindow::SetConnections(std::span<const ConnectionEntry> connections)
{
    m_ui->List1->clear();
    for (const ConnectionEntry& connection : connections)
        m_ui->List1->addItem(ToQString(connection.Name));
}

void ConnectionWindow::SetSessions(std::span<const std::string> lines)
{
    m_ui->List2->clear();
    for (const std::string& line : lines)
        m_ui->List2->addItem(ToQString(line));
    if (lines.size() == 1)
        m_ui->List2->setCurrentRow(0);
    if (!lines.empty())
        m_ui->List2->setFocus(); // where Return joins
}

void ConnectionWindow::SetStatus(std::string_view status)
{
    m_ui->Label5->setText(ToQString(status));
    m_ui->Label5->repaint();
    m_ui->Label5->setAccessibleName("Status: " + m_ui->Label5->text());
    QAccessibleEvent spoken(m_ui->Label5, QAccessible::Alert);
    QAccessible::updateAccessibility(&spoken);
}

void ConnectionWindow::SetListsEnabled(bool enabled)
{
    m_ui->List1->setEnabled(enabled);
    m_ui->Command1->setEnabled(enabled);
    EnableHosting();
}

void ConnectionWindow::SetTimers(bool running)
{
    for (QTimer* timer : {&m_timer1, &m_timer2})
        running ? timer->start() : timer->stop();
}

void ConnectionWindow::OpenRadar()
{
    Remember();
    emit Joined();
}

void ConnectionWindow::EndProgram()
{
    emit ExitRequested();
}

void ConnectionWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        m_connection.LeaveOperation();
    else
        QWidget::keyPressEvent(event);
}

void ConnectionWindow::closeEvent(QCloseEvent* event)
{
    if (m_connection.State() != ConnectionState::Connected) {
        event->ignore(); // the program ends, and the window with it
        m_connection.Exit();
    }
}
} // namespace corvane
