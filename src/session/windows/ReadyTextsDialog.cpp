#include "session/windows/ReadyTextsDialog.h"

#include "core/windows/DeskSettings.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

namespace corvane {
QString ReadyTextsDialog::Key(int functionKey)
{
    return QStringLiteral("chat/ready/F%1").arg(functionKey);
}

ReadyTextsDialog::ReadyTextsDialog(DeskSettings& desk, QWidget* parent) : QDialog(parent)
{
    constexpr int FirstKey = 2;
    constexpr int LastKey = 12;
    setObjectName("ReadyTexts");
    setWindowTitle("Ready-made texts");
    auto* const rows = new QFormLayout(this);
    rows->addRow(new QLabel("A key writes its text. %c stands for the pilot selected in the list of members."));
    for (int key = FirstKey; key <= LastKey; ++key) {
        auto* const text = new QLineEdit(desk.Text(Key(key)));
        text->setObjectName(QStringLiteral("F%1").arg(key));
        text->setMaxLength(DeskSettings::TextLimit);
        text->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
        rows->addRow(QStringLiteral("F%1:").arg(key), text);
        connect(this, &QDialog::accepted, text, [&desk, text, key] {
            if (text->text() != desk.Text(Key(key)))
                desk.Keep(Key(key), text->text());
        });
    }
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    rows->addRow(buttons);
}
} // namespace corvane
