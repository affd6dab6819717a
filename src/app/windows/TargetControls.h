#pragma once

#include "radar/RadarDisplay.h"

#include <QObject>
#include <QString>

class QKeyEvent;
class QLabel;
class QPoint;

namespace corvane {
class ScopeWidget;

/// What the radar's window offers about single targets: the information panel's place, the keys, and a target's menu.
/// All parts are borrowed.
class TargetControls final : public QObject {
    Q_OBJECT

public:
    TargetControls(RadarDisplay& display, ScopeWidget& scope, QLabel& panel, const PlayerTable& players,
                   QObject* parent = nullptr);

    /// Shows the information panel as the display has it.
    void ShowPanel();
    /// Returns whether the key is one for targets, and has done its work.
    bool PressKey(const QKeyEvent& event);

signals:
    /// The picture is to be brought up to date.
    void Changed();
    void PropertiesRequested(QString name);
    void WriteRequested(QString name);

private:
    void OpenMenu(QPoint place);
    void CenterOn(const MemberKey& member);

    RadarDisplay& m_display;
    ScopeWidget& m_scope;
    QLabel& m_panel;
    const PlayerTable& m_players;
};
} // namespace corvane
