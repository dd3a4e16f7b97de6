// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// An application that shows one window until it is killed: xwindows_client TITLE X Y WIDTH HEIGHT [fullscreen|dock]

#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto number = [&](qsizetype i) { return arguments.value(i).toInt(); };
    QWidget window;
    window.setWindowTitle(arguments.value(1));
    window.setGeometry(number(2), number(3), number(4), number(5));
    if (arguments.value(6) == QStringLiteral("dock"))
        window.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
    window.setWindowState(arguments.value(6) == QStringLiteral("fullscreen") ? Qt::WindowFullScreen
                                                                             : Qt::WindowNoState);
    window.show();
    return QApplication::exec();
}
