#include "app/windows/TrafficControls.h"

#include "app/AppState.h"
#include "app/windows/TrafficPrompts.h"
#include "core/windows/QtText.h"
#include "traffic/out/FeedOut.h"

#include <QAction>
#include <QLabel>
#include <QPointer>

namespace corvane {
TrafficControls::TrafficControls(const AppState& state, MessageBoxes& boxes, DeskSettings& desk, QAction& offer,
                                 QLabel& status)
    : m_state(state), m_boxes(boxes), m_desk(desk), m_offer(offer), m_status(status)
{
    m_clock.start();
    connect(&m_offer, &QAction::triggered, this, &TrafficControls::OfferTriggered);
    ShowState();
}

TrafficControls::~TrafficControls() = default;

void TrafficControls::OfferTriggered(bool on)
{
    m_offer.setChecked(false); // until it is so
    m_out.reset();
    const QPointer<TrafficControls> self(this);
    const auto typed = on ? AskFeedOutPort(m_desk) : std::nullopt;
    if (self.isNull() || !typed)
        return; // the session may have ended behind the dialog
    auto opened = OpenFeedOut("sbs:" + *typed, m_state.MagVar, &m_state.TrafficDetails);
    if (!opened) {
        ShowState();
        m_boxes.Warn(BoxText(opened.error()));
        return;
    }
    m_out = *std::move(opened);
    ShowState();
}

void TrafficControls::Refresh()
{
    if (m_out)
        m_out->Tick(m_state.Players.Players(), m_clock.elapsed());
    ShowState();
}

void TrafficControls::ShowState()
{
    m_offer.setChecked(m_out != nullptr);
    const QString status = ToQString(TrafficStatus(m_state.TrafficHealth, m_out.get()));
    if (status == m_status.text())
        return;
    m_status.setText(status);
    m_status.setVisible(!status.isEmpty());
}
} // namespace corvane
