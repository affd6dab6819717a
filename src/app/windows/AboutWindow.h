#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class Form7;
}

namespace corvane {
class AboutWindow final : public QWidget {
    Q_OBJECT

public:
    /// mapCredits  whom the data of the map in use are from; empty for none to name
    explicit AboutWindow(const QString& mapCredits);
    ~AboutWindow() override;

signals:
    void Closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    std::unique_ptr<Ui::Form7> m_ui;
};
} // namespace corvane
