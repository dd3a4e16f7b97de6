// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/range.h>

#include <QtCore/QRectF>
#include <QtCore/QString>

/// \file
/// The console: a text that the whole process prints lines to while it is being debugged, and a window that shows it.
/// Every line goes to the system log too.
///
///     dravelin::showConsoleNextToWindow(window->frameGeometry());
///     dravelin::console("loaded");
///     dravelin::consoleRect(view->geometry());            // {{0, 0}, {640, 480}}
///     dravelin::inhibitConsole(true);                     // the release build stays silent
///
/// The first function that needs the console creates it. Printing never shows its window, and closing the window keeps
/// the text. Without a QApplication the text is kept all the same, and a window can be shown once there is one. Call
/// these functions on the main thread.

namespace dravelin {

class ConsoleWindowController;

/// Creates the console and loads its window, without showing it; even while inhibited.
/// \operation{initializeConsole}
DRAVELIN_EXPORT void initializeConsole();

/// Shows the console's window.
/// \operation{showConsole}
DRAVELIN_EXPORT void showConsole();

/// Shows the console's window 20 to the right of another one, their tops in one line.
/// \param frame of the other window on the screen, `QWidget::frameGeometry()`
/// \operation{showConsoleNextToWindow}
DRAVELIN_EXPORT void showConsoleNextToWindow(const QRectF &frame);

/// Forgets the text; nothing without a console.
/// \operation{clearConsole}
DRAVELIN_EXPORT void clearConsole();

/// Prints a line: the text and a carriage return; the log gets the text alone. Absent text creates the console and
/// prints nothing.
/// \cost two bytes of memory for each character, and as much again for some lines in the window once it was shown
/// \operation{console}
DRAVELIN_EXPORT void console(const QString &text);

/// Prints a rectangle as "{{x, y}, {width, height}}".
/// \operation{consoleRect}
DRAVELIN_EXPORT void consoleRect(const QRectF &rect);

/// Prints a size as "{width, height}".
/// \operation{consoleSize}
DRAVELIN_EXPORT void consoleSize(const QSizeF &size);

/// Prints a point as "{x, y}".
/// \operation{consolePoint}
DRAVELIN_EXPORT void consolePoint(const QPointF &point);

/// Prints a range as "{location, length}".
/// \operation{consoleRange}
DRAVELIN_EXPORT void consoleRange(Range range);

/// Prints a number with seven decimals, in every locale with a point.
/// \operation{consoleFloat}
DRAVELIN_EXPORT void consoleFloat(float value);

/// Prints the low 32 bits of a number, as a signed number: 4294967297 prints 1.
/// \operation{consoleInteger}
DRAVELIN_EXPORT void consoleInteger(qint64 value);

/// While true, printing, clearing and showing do nothing, and nothing is logged. False at first.
/// \operation{inhibitConsole}
DRAVELIN_EXPORT void inhibitConsole(bool inhibit);

/// Closes the window and forgets the console; the next line starts a new one.
/// \operation{killConsole}
DRAVELIN_EXPORT void killConsole();

/// The console as it is now; null when there is none.
[[nodiscard]] DRAVELIN_EXPORT ConsoleWindowController *currentConsole() noexcept;

} // namespace dravelin
