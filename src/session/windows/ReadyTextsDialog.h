#pragma once

#include <QDialog>

namespace corvane {
class DeskSettings;

/// The user's ready-made chat lines, one for each function key from F2; F1 is the desktop's key for help.
class ReadyTextsDialog final : public QDialog {
    Q_OBJECT

public:
    ReadyTextsDialog(DeskSettings& desk, QWidget* parent);

    /// Where the line of a function key, 1 to 12, is remembered.
    [[nodiscard]] static QString Key(int functionKey);
};
} // namespace corvane
