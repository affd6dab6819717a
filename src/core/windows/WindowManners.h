#pragma once

class QPushButton;
class QWidget;

namespace corvane {
/// Makes a window another's: the desktop keeps it above that one, minimises both together, and covers no other
/// program's windows with it. A window flag that is set later undoes it. It
/// comes before the window's place is set, which it would move by the frame's size.
void BelongTo(QWidget& window, QWidget& owner);

/// Shows a window in front of the others, with the keyboard.
void BringUp(QWidget& window);

/// Draws the eye to a window for half a second, and the desktop's attention where it is not in front.
void Flash(QWidget& window);

/// Makes Return press the button that has the keyboard, as Space does, and otherwise one that the window names; fields
/// that take Return for themselves come first.
void PressOnReturn(QWidget& window, QPushButton* otherwise = nullptr);
} // namespace corvane
