#include "session/windows/ChatWindow.h"

#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"
#include "ui_ChatWindow.h"

#include <QCloseEvent>

namespace corvane {
ChatWindow::ChatWindow(const SessionState& session, const PlayerTable& players, MessageBoxes& boxes)
    : QWidget(nullptr, Qt::Window | Qt::WindowStaysOnTopHint),
      m_ui(std::make_unique<Ui::Form6>()),
      m_session(session),
      m_players(players),
      m_boxes(boxes)
{
    m_ui->setupUi(this);
    PressOnReturn(*this);
    QFont font = m_ui->RichTextBox1->font();
    font.setPointSizeF(8.5); // which the form's file cannot say
    m_ui->RichTextBox1->setFont(font);
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_timer1.setObjectName("Timer1");
    m_timer1.setInterval(StayOnTopIntervalMs);
    connect(&m_timer1, &QTimer::timeout, this, [this] {
        if (isVisible())
            raise();
    });
    connect(m_ui->Command1, &QPushButton::clicked, this, &ChatWindow::Send);
    connect(m_ui->Text1, &QLineEdit::returnPressed, this, &ChatWindow::Send);
    connect(m_ui->Command2, &QPushButton::clicked, this, &ChatWindow::HideBehind);
    m_ui->Text1->selectAll();
    ShowHistory();
    RefreshPlayerList();
    m_timer1.start();
}

ChatWindow::~ChatWindow() = default;

void ChatWindow::AddChatLine(std::string_view from, std::string_view text)
{
    m_log.AddChatLine(from, text);
    ShowHistory();
}

void ChatWindow::RefreshPlayerList()
{
    m_log.RefreshPlayerList(m_players);
    m_ui->List1->clear();
    for (const std::string& member : m_log.Members())
        m_ui->List1->addItem(ToQString(member));
    m_ui->List1->repaint();
}

void ChatWindow::Send()
{
    const std::string text = ToText(m_ui->Text1->text());
    if (SendChat(m_session, text, m_log, m_boxes))
        m_ui->Text1->clear();
    ShowHistory();
}

void ChatWindow::ShowHistory()
{
    m_ui->RichTextBox1->setPlainText(ToQString(m_log.History()));
}

void ChatWindow::HideBehind()
{
    lower();
    hide();
}

void ChatWindow::ShowAgain()
{
    show();
    raise();
    activateWindow();
    m_ui->Text1->setFocus();
}

void ChatWindow::WriteTo(const QString& name)
{
    const QString typed = m_ui->Text1->isModified() ? m_ui->Text1->text() : QString();
    m_ui->Text1->setText(name + ' ' + typed);
    ShowAgain();
    m_ui->Text1->end(false);
}

void ChatWindow::closeEvent(QCloseEvent* event)
{
    event->ignore(); // the conversation must survive: only leaving the session ends it
    HideBehind();
}
} // namespace corvane
