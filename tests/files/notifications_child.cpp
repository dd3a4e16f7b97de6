// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// An application that shows a notification and ends.

#include <dravelin/files/notifications.h>

#include <QtCore/QCoreApplication>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    dravelin::showNotification("last", "words");
    return 0;
}
