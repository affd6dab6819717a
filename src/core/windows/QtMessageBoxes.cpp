#include "core/windows/QtMessageBoxes.h"

#include "core/windows/QtText.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

namespace corvane {
static QMessageBox::Icon BoxIcon(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Warning: return QMessageBox::Warning;
    case MessageIcon::Critical: return QMessageBox::Critical;
    case MessageIcon::Information: break;
    }
    return QMessageBox::Information;
}

/// A box with plain text: names and paths in it must not be taken for markup.
static void Prepare(QMessageBox& box, std::string_view title, std::string_view text)
{
    box.setWindowTitle(ToQString(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQString(text));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
}

void QtMessageBoxes::Show(MessageIcon icon, std::string_view title, std::string_view text)
{
    QMessageBox box(BoxIcon(icon), QString(), QString(), QMessageBox::Ok, QApplication::activeWindow());
    Prepare(box, title, text);
    box.exec();
}

bool QtMessageBoxes::Confirm(std::string_view title, std::string_view text)
{
    QMessageBox box(QMessageBox::Question, QString(), QString(), QMessageBox::Ok | QMessageBox::Cancel,
                    QApplication::activeWindow());
    Prepare(box, title, text);
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Ok;
}

std::optional<std::string> QtMessageBoxes::AskText(std::string_view title, std::string_view prompt)
{
    bool accepted = false;
    const QString text = QInputDialog::getText(QApplication::activeWindow(), ToQString(title), ToQString(prompt),
                                               QLineEdit::Password, QString(), &accepted);
    if (!accepted)
        return std::nullopt;
    return ToText(text);
}
} // namespace corvane
