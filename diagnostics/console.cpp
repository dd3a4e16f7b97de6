// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/console.h>

#include <dravelin/diagnostics/consolewindow.h>
#include <dravelin/platform/geometry.h>
#include <dravelin/platform/log.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

#include <charconv>
#include <cmath>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

std::shared_ptr<ConsoleWindowController> &consoleWindow()
{
    static std::shared_ptr<ConsoleWindowController> controller;
    return controller;
}

bool inhibitActivity = false;

/// Whoever prints holds on to the console: what hears of the line may kill it.
std::shared_ptr<ConsoleWindowController> ensureConsole()
{
    auto &controller = consoleWindow();
    if (!controller) {
        controller = std::make_shared<ConsoleWindowController>();
        if (qApp && qApp->inherits("QApplication"))
            controller->window();
    }
    return controller;
}

/// Coordinates whose y grows upwards, from the lower edge of the primary screen.
double upward(double bottom)
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return (screen ? screen->geometry().y() + screen->geometry().height() : 0) - bottom;
}

void placeNextTo(QWidget *window, const QRectF &frame)
{
    const double height = window->frameGeometry().height();
    const auto x = float(frame.x() + frame.width() + 20.0);
    const auto y = float(upward(frame.y() + frame.height()) + frame.height() - height);
    window->move(qRound(x), qRound(upward(double(y) + height)));
}

} // namespace

ConsoleWindowController *currentConsole() noexcept { return consoleWindow().get(); }

void initializeConsole() { ensureConsole(); }

void showConsole()
{
    if (!inhibitActivity)
        ensureConsole()->showWindow();
}

void showConsoleNextToWindow(const QRectF &frame)
{
    if (inhibitActivity)
        return;
    const auto controller = ensureConsole();
    if (QWidget *window = controller->window()) {
        placeNextTo(window, frame);
        controller->showWindow();
    }
}

void clearConsole()
{
    const auto controller = consoleWindow();
    if (!inhibitActivity && controller)
        controller->clear();
}

void console(const QString &text)
{
    if (inhibitActivity)
        return;
    const auto controller = ensureConsole();
    if (text.isNull())
        return;
    controller->appendText(text);
    controller->appendText(u"\r"_s);
    logInfo(text);
}

void consoleRect(const QRectF &rect) { console(NSStringFromRect(rect)); }
void consoleSize(const QSizeF &size) { console(NSStringFromSize(size)); }
void consolePoint(const QPointF &point) { console(NSStringFromPoint(point)); }
void consoleRange(Range range) { console(NSStringFromRange(range)); }

void consoleFloat(float value)
{
    char digits[64];
    const double number = std::isnan(value) ? std::fabs(double(value)) : double(value);
    const auto result = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed, 7);
    console(QString::fromLatin1(digits, result.ptr - digits));
}

void consoleInteger(qint64 value) { console(QString::number(qint32(value))); }

void inhibitConsole(bool inhibit) { inhibitActivity = inhibit; }

void killConsole()
{
    const auto controller = std::exchange(consoleWindow(), nullptr);
    if (controller)
        controller->close();
}

} // namespace dravelin
