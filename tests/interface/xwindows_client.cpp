// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// An application that shows one window until it is killed: xwindows_client TITLE X Y WIDTH HEIGHT [fullscreen]
// It says so by a line. Anything on its standard input minimises the window.

#include <QtCore/QSocketNotifier>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <cstdio>

#include <unistd.h>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto number = [&](qsizetype i) { return arguments.value(i).toInt(); };
    QWidget window;
    window.setWindowTitle(arguments.value(1));
    window.setGeometry(number(2), number(3), number(4), number(5));
    if (arguments.value(6) == QStringLiteral("fullscreen"))
        window.setWindowState(Qt::WindowFullScreen);
    window.show();
    std::puts("shown");
    std::fflush(stdout);
    const QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &window, &QWidget::showMinimized, Qt::SingleShotConnection);
    return QApplication::exec();
}
