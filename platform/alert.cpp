// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/alert.h"

#include <QtCore/QPointer>
#include <QtCore/QSocketNotifier>
#include <QtWidgets/QApplication>

#include <fcntl.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace dravelin {

namespace {

int terminal = -1;
int requests = -1; // an event descriptor, which wakes the event loop

void hookIntoEventLoop()
{
    static QPointer<QSocketNotifier> notifier;
    if (notifier || requests < 0 || !qobject_cast<QApplication *>(QCoreApplication::instance()))
        return;
    notifier = new QSocketNotifier(requests, QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [] {
        eventfd_t count = 0;
        if (::eventfd_read(requests, &count) == 0)
            QApplication::beep();
    });
}

/// A process in the background would be stopped for writing to the terminal.
bool isInForeground() noexcept { return terminal >= 0 && ::tcgetpgrp(terminal) == ::getpgrp(); }

} // namespace

void prepareAlert()
{
    if (requests < 0) {
        requests = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
        terminal = ::open("/dev/tty", O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    }
    hookIntoEventLoop();
}

void soundAlert() noexcept
{
    if (requests >= 0)
        ::eventfd_write(requests, 1);
    if (isInForeground()) [[maybe_unused]]
        const auto written = ::write(terminal, "\a", 1);
}

} // namespace dravelin
