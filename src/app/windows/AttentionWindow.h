#pragma once

#include "session/AttentionSigns.h"

#include <QWidget>

#include <memory>

namespace Ui {
class AttentionForm;
}

namespace corvane {
/// What is to be heard and what is to be seen: two boxes for each sign.
class AttentionWindow final : public QWidget {
    Q_OBJECT

public:
    /// options  changed in place
    AttentionWindow(AttentionOptions& options, QWidget* parent);
    ~AttentionWindow() override;

signals:
    void Changed();
    /// The user wants to hear a sign's tone.
    void TryRequested(AttentionSign sign);

private:
    void Connect(std::array<bool, AttentionSignCount>& wanted, const QString& prefix);

    std::unique_ptr<Ui::AttentionForm> m_ui;
};
} // namespace corvane
