#include "session/windows/ChatWindow.h"

#include "core/Text.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"
#include "session/windows/ReadyTextsDialog.h"
#include "ui_ChatWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTextBlock>
#include <QTime>
#include <QWindow>

namespace corvane {
static constexpr const char* TimesKey = "chat/times";

ChatWindow::ChatWindow(const SessionState& session, const PlayerTable& players, MessageBoxes& boxes, DeskSettings& desk)
    : QWidget(nullptr, Qt::Window),
      m_ui(std::make_unique<Ui::Form6>()),
      m_session(session),
      m_players(players),
      m_boxes(boxes),
      m_desk(desk),
      m_showTimes(desk.Flag(TimesKey, false))
{
    m_ui->setupUi(this);
    PressOnReturn(*this);
    QFont font = m_ui->RichTextBox1->font();
    font.setPointSizeF(8.5); // which the form's file cannot say
    m_ui->RichTextBox1->setFont(font);
    m_ui->RichTextBox1->setPlainText(ToQString(m_log.History()));
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_timer1.setObjectName("Timer1");
    m_timer1.setInterval(StayOnTopIntervalMs);
    connect(&m_timer1, &QTimer::timeout, this, &ChatWindow::StayAbove);
    connect(m_ui->Command1, &QPushButton::clicked, this, &ChatWindow::Send);
    connect(m_ui->Text1, &QLineEdit::returnPressed, this, &ChatWindow::Send);
    connect(m_ui->Command2, &QPushButton::clicked, this, &ChatWindow::HideBehind);
    m_ui->Text1->selectAll();
    m_ui->Text1->installEventFilter(this);
    FillOptions();
    RefreshPlayerList();
    m_timer1.start();
}

ChatWindow::~ChatWindow() = default;

void ChatWindow::FillOptions()
{
    auto* const menu = new QMenu(m_ui->Options1);
    QAction* const times = menu->addAction("Show &times");
    times->setObjectName("show_times1");
    times->setCheckable(true);
    times->setChecked(m_showTimes);
    connect(times, &QAction::toggled, this, [this](bool on) {
        m_showTimes = on;
        m_desk.Keep(TimesKey, on);
    });
    QAction* const ready = menu->addAction("&Ready-made texts...");
    ready->setObjectName("ready_texts1");
    connect(ready, &QAction::triggered, this, [this] {
        auto* const dialog = new ReadyTextsDialog(m_desk, this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->open();
    });
    m_ui->Options1->setMenu(menu);
}

void ChatWindow::AddChatLine(std::string_view from, std::string_view text)
{
    m_log.AddChatLine(from, text);
    ShowLine(from, text);
    if (!isVisible() || !isActiveWindow())
        SetUnread(m_unread + 1);
}

void ChatWindow::RefreshPlayerList()
{
    const QListWidgetItem* const selected = m_ui->List1->currentItem();
    const QString name = selected != nullptr ? selected->text() : QString();
    m_log.RefreshPlayerList(m_players);
    m_ui->List1->clear();
    for (const std::string& member : m_log.Members())
        m_ui->List1->addItem(ToQString(member));
    if (const auto again = m_ui->List1->findItems(name, Qt::MatchExactly); !name.isEmpty() && !again.isEmpty())
        m_ui->List1->setCurrentItem(again.first());
    m_ui->List1->repaint();
}

void ChatWindow::Send()
{
    const std::string text = ToText(m_ui->Text1->text());
    m_firstText = false;
    if (!SendChat(m_session, text, m_log, m_boxes))
        return;
    m_ui->Text1->clear();
    m_draft.Sent(text);
    if (!m_session.HasOwnPlayer()) // nothing was sent
        return;
    const auto own = OwnFriendlyName(m_session);
    ShowLine(own ? *own : std::string(), text);
}

/// Whether a line of somebody else names the own callsign.
bool ChatWindow::SpeaksToOwnPlayer(std::string_view from, std::string_view text) const
{
    const auto own = OwnFriendlyName(m_session);
    if (!own || *own == from)
        return false;
    const QString callsign = ToQString(CallsignIn(*own));
    return !callsign.isEmpty() && ToQString(text).contains(callsign, Qt::CaseInsensitive);
}

/// Puts a line on top of those shown: what somebody reads or has selected further down stays as it is.
void ChatWindow::ShowLine(std::string_view from, std::string_view text)
{
    QScrollBar& bar = *m_ui->RichTextBox1->verticalScrollBar();
    const int fromTheEnd = bar.value() == bar.minimum() ? -1 : bar.maximum() - bar.value();
    QTextCharFormat format;
    format.setFontWeight(SpeaksToOwnPlayer(from, text) ? QFont::Bold : QFont::Normal);
    const QString time = m_showTimes ? QTime::currentTime().toString("HH:mm ") : QString();
    QTextCursor top(m_ui->RichTextBox1->document());
    top.insertText(time + ToQString(OneLine(from)) + ": " + ToQString(OneLine(text)) + '\n', format);
    top.movePosition(QTextCursor::End);
    while (static_cast<std::size_t>(m_ui->RichTextBox1->document()->blockCount()) > m_log.LineCount()) {
        top.select(QTextCursor::BlockUnderCursor); // with the line end before it
        top.removeSelectedText();
    }
    bar.setValue(fromTheEnd < 0 ? bar.minimum() : bar.maximum() - fromTheEnd);
    emit LineAdded(from, text);
}

void ChatWindow::SetUnread(int lines)
{
    if (lines == m_unread)
        return;
    m_unread = lines;
    const QString title = "Chat Window";
    setWindowTitle(lines == 0 ? title : QStringLiteral("(%1) %2").arg(lines).arg(title));
    if (lines > 0 && isVisible())
        QApplication::alert(this);
    emit UnreadChanged(lines);
}

/// Where the desktop does not keep the window above its radar by itself. It never comes above any other window: those
/// that work in the radar's place have the keyboard then.
void ChatWindow::StayAbove()
{
    const QWindow* const radar = windowHandle() != nullptr ? windowHandle()->transientParent() : nullptr;
    if (isVisible() && radar != nullptr && QGuiApplication::focusWindow() == radar)
        raise();
}

void ChatWindow::HideBehind()
{
    lower();
    hide();
}

void ChatWindow::ShowAgain()
{
    BringUp(*this);
    m_ui->Text1->setFocus();
    SetUnread(0);
}

bool ChatWindow::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate) {
        m_ui->Text1->setFocus();
        SetUnread(0);
    }
    return QWidget::event(event);
}

/// The text that stands in the field at first goes whole as soon as anything is done to it, so that no part of it can
/// be sent among what was typed.
void ChatWindow::ClearFirstText()
{
    if (m_firstText && m_ui->Text1->text() == ToQString(ChatModel::TypedTextAtFirst))
        m_ui->Text1->clear();
    m_firstText = false;
}

bool ChatWindow::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        if (HandleKey(*static_cast<QKeyEvent*>(event)))
            return true;
        break;
    case QEvent::MouseButtonPress:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::Drop: ClearFirstText(); break;
    default: break;
    }
    return QWidget::eventFilter(watched, event);
}

/// Returns whether the key has done its work.
bool ChatWindow::HandleKey(const QKeyEvent& key)
{
    const std::string typed = ToText(m_ui->Text1->text());
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return false;
    case Qt::Key_Tab: return Complete();
    case Qt::Key_Up: SetTyped(m_draft.Older(m_firstText ? std::string() : typed)); return true;
    case Qt::Key_Down: SetTyped(m_draft.Newer(typed)); return true;
    default: break;
    }
    if (!key.text().isEmpty() || key.key() == Qt::Key_Insert) // not what only moves, or holds others
        ClearFirstText();
    return false;
}

void ChatWindow::SetTyped(const std::string& text)
{
    m_firstText = false;
    m_ui->Text1->setText(ToQString(text));
}

/// Completes the word before the cursor. Where that changes nothing, the key goes on to the next control.
bool ChatWindow::Complete()
{
    const QString typed = m_ui->Text1->text();
    const int cursor = m_ui->Text1->cursorPosition();
    const std::string before = ToText(typed.left(cursor));
    const std::string completed = CompleteCallsign(before, m_log.Members());
    if (m_firstText || completed == before)
        return false;
    m_ui->Text1->setText(ToQString(completed) + typed.mid(cursor));
    m_ui->Text1->setCursorPosition(static_cast<int>(completed.size()));
    return true;
}

/// Keys that the control with the keyboard has no use for: ready-made texts come from the list of members, too.
void ChatWindow::keyPressEvent(QKeyEvent* event)
{
    const bool isFunctionKey = event->key() >= Qt::Key_F1 && event->key() <= Qt::Key_F12;
    const QString text = isFunctionKey ? m_desk.Text(ReadyTextsDialog::Key(event->key() - Qt::Key_F1 + 1)) : QString();
    if (text.isEmpty())
        QWidget::keyPressEvent(event);
    else
        InsertReadyText(text);
}

void ChatWindow::InsertReadyText(const QString& text)
{
    ClearFirstText();
    const QListWidgetItem* const pilot = m_ui->List1->currentItem();
    const std::string callsign = pilot != nullptr ? ToText(pilot->text()) : std::string();
    m_ui->Text1->insert(ToQString(ReadyText(ToText(text), callsign)));
    m_ui->Text1->setFocus();
}

void ChatWindow::WriteTo(const QString& name)
{
    ClearFirstText();
    m_ui->Text1->setText(name + ' ' + m_ui->Text1->text());
    ShowAgain();
    m_ui->Text1->end(false);
}

void ChatWindow::closeEvent(QCloseEvent* event)
{
    event->ignore(); // the conversation must survive: only leaving the session ends it
    HideBehind();
}
} // namespace corvane
