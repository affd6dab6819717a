#include "app/windows/TargetControls.h"

#include "core/windows/QtText.h"
#include "radar/windows/ScopeWidget.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMenu>

namespace corvane {
TargetControls::TargetControls(RadarDisplay& display, ScopeWidget& scope, QLabel& panel, const PlayerTable& players,
                               QObject* parent)
    : QObject(parent), m_display(display), m_scope(scope), m_panel(panel), m_players(players)
{
    m_panel.hide();
    m_panel.setAttribute(Qt::WA_TransparentForMouseEvents); // the pointer moves on over the scope
    connect(&m_scope, &ScopeWidget::PointerMoved, this, &TargetControls::ShowPanel);
    connect(&m_scope, &ScopeWidget::TargetMenuRequested, this, &TargetControls::OpenMenu);
}

void TargetControls::ShowPanel()
{
    const bool shows = !m_display.PanelText().empty();
    m_panel.setText(ToQString(m_display.PanelText()));
    m_panel.setVisible(shows);
    if (!m_panel.isVisible()) {
        m_display.SetPanelBox({});
        return;
    }
    m_panel.adjustSize();
    const PixelBox place = m_display.PanelPlace(m_panel.width(), m_panel.height());
    m_panel.move(place.Left, place.Top);
    m_panel.raise();
    m_display.SetPanelBox(place);
}

bool TargetControls::PressKey(const QKeyEvent& event)
{
    if (m_display.Classic())
        return false;
    const int key = event.key();
    const bool onKeyPad = event.modifiers().testFlag(Qt::KeypadModifier);
    const bool turns = onKeyPad && key >= Qt::Key_1 && key <= Qt::Key_9;
    if (key != Qt::Key_Space && key != Qt::Key_Escape && !turns)
        return false;
    if (key == Qt::Key_Space)
        m_display.AcknowledgeNext();
    else if (key == Qt::Key_Escape)
        m_display.LetGo();
    else
        m_display.TurnBlock(key - Qt::Key_0);
    emit Changed();
    return true;
}

void TargetControls::OpenMenu(QPoint place)
{
    const auto member = m_display.MemberAt({place.x(), place.y()});
    if (!member)
        return;
    m_display.PointerLeaves(); // the note would lie under the menu
    ShowPanel();
    const QString name = ToQString(member->Name);
    auto* const menu = new QMenu(&m_scope);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setObjectName("TargetMenu");
    QString title = name;
    menu->addSection(title.replace('&', "&&"));
    connect(menu->addAction(QStringLiteral("&Centre on it")), &QAction::triggered, this,
            [this, member] { CenterOn(*member); });
    QAction* const follow = menu->addAction(QStringLiteral("&Follow it"));
    follow->setCheckable(true);
    follow->setChecked(m_display.Followed() == member);
    connect(follow, &QAction::triggered, this, [this, member](bool on) {
        m_display.Follow(on ? member : std::nullopt);
        emit Changed();
    });
    connect(menu->addAction(QStringLiteral("&Write to it...")), &QAction::triggered, this,
            [this, name] { emit WriteRequested(name); });
    connect(menu->addAction(QStringLiteral("&Player properties...")), &QAction::triggered, this,
            [this, name] { emit PropertiesRequested(name); });
    menu->popup(m_scope.mapToGlobal(place));
}

void TargetControls::CenterOn(const MemberKey& member)
{
    const auto slot = m_players.FindPlayer(member.PlayerId, member.Name);
    if (!slot)
        return; // it has left meanwhile
    const PlayerRecord& player = m_players.Players()[*slot];
    m_display.Recenter({player.Latitude, player.Longitude});
    emit Changed();
}
} // namespace corvane
