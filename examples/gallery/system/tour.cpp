// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the system page does on its own: it runs commands to their end, into a time limit and into a cancellation, and shows
// notifications on a desktop of its own, where a daemon shows them and a mouse clicks on them.

#include "tour.h"

#include "system/commandline.h"
#include "system/commandpanel.h"
#include "system/desktopsession.h"
#include "system/notificationpanel.h"
#include "system/outputview.h"
#include "system/systempage.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSet>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// Whether there is writing: more than the ground and the frame.
bool isPainted(const QImage &image, const QRect &area)
{
    QSet<QRgb> colors;
    for (int x = area.left(); x < area.right(); ++x) {
        for (int y = area.top(); y < area.bottom(); ++y)
            colors.insert(image.pixel(x, y));
    }
    return colors.size() > 10;
}

} // namespace

class SystemPage::TourSteps
{
public:
    TourSteps(SystemPage &page, Tour &tour)
        : m_page(page), m_tour(tour), m_commands(*page.m_commands), m_notifications(*page.m_notifications)
    {}

    void run()
    {
        commands();
        manyLines();
        history();
        timeLimit();
        cancel();
        m_tour.text(u"system-commands"_s, m_record);
        version();
        notifications();
    }

private:
    void commands()
    {
        enter(u"echo one; echo two >&2; printf 'thr'; sleep 0.1; echo ee; exit 3"_s);
        m_tour.expect(m_commands.output() == "one\ntwo\nthree\n"_L1, u"both streams come in their order"_s);
        m_tour.expect(m_commands.status().endsWith("exit status 3"_L1), m_commands.status());
        enter(u"kill -9 $$"_s);
        m_tour.expect(m_commands.status().endsWith("ended by signal 9"_L1), m_commands.status());
    }

    void manyLines()
    {
        enter(u"seq 1 400000"_s);
        const QString output = m_commands.output();
        m_tour.expect(output.size() <= OutputView::Limit && output.endsWith("\n400000\n"_L1),
                      u"of a long output the end stays"_s);
        m_commands.archiveButton()->click();
        m_tour.expect(m_commands.status().endsWith("reads back equal"_L1), m_commands.status());
    }

    void history()
    {
        type(Qt::Key_Up);
        type(Qt::Key_Up);
        m_tour.expect(m_commands.line()->text() == "kill -9 $$"_L1, u"the arrow keys bring earlier commands back"_s);
        enter(u"uname -s; ls -l /proc/self/fd | wc -l"_s);
        picture(u"1-command"_s);
    }

    void timeLimit()
    {
        m_commands.limit()->setValue(0.5);
        enter(u"echo begun; sleep 600"_s);
        m_commands.limit()->setValue(0);
        m_tour.expect(m_commands.output() == "begun\n"_L1 && m_commands.status().endsWith("time limit"_L1),
                      m_commands.status());
    }

    void cancel()
    {
        start(u"while :; do echo tick; sleep 0.05; done"_s);
        m_tour.waitFor([this] { return m_commands.output().count("tick\n"_L1) >= 3; }, u"output comes while it runs"_s);
        picture(u"2-running"_s);
        m_commands.cancelButton()->click();
        waitForEnd();
        m_tour.expect(m_commands.status().endsWith("cancelled"_L1), m_commands.status());
    }

    void version()
    {
        const QString before = m_page.m_version->text();
        m_page.m_build->setText(u"57"_s);
        m_tour.expect(m_page.m_version->text().endsWith(" build 57"_L1) && !before.contains("build 57"_L1),
                      m_page.m_version->text());
    }

    void notifications()
    {
        DesktopSession session;
        const bool isShown = session.startDesktop();
        m_notifications.seconds()->setValue(0);
        if (isShown) {
            clickOn(session);
            replaceAndWithdraw(session);
        } else {
            m_notifications.showButton()->click();
            waitForLog(u"1: closed: NotShown"_s);
            m_tour.did(u"there is no desktop to show notifications"_s);
        }
        picture(u"3-notifications"_s);
        m_tour.text(u"system-notifications"_s, m_notifications.log() + u'\n');
    }

    void clickOn(const DesktopSession &session)
    {
        m_notifications.showButton()->click();
        waitForLog(u"1: shown"_s);
        waitForDesktop(session, u"a"_s);
        session.click(2);
        waitForLog(u"1: action \"default\""_s);
        waitForLog(u"1: closed: Dismissed"_s);
        const QString history = DesktopSession::askDaemon({u"history"_s});
        m_tour.expect(history.contains("42 pictures, &lt;all&gt; of them &amp; more"_L1),
                      u"the daemon took the text as it stands"_s);
    }

    void replaceAndWithdraw(const DesktopSession &session)
    {
        m_notifications.showButton()->click();
        waitForLog(u"2: shown"_s);
        m_notifications.messageLine()->setText(u"43 pictures"_s);
        m_notifications.replaceButton()->click();
        waitForLog(u"2: shown\n2: shown"_s);
        m_tour.expect(DesktopSession::askDaemon({u"count"_s, u"displayed"_s}).trimmed() == "1"_L1,
                      u"the second notification has taken the place of the first"_s);
        waitForDesktop(session, u"b-replaced"_s);
        m_notifications.withdrawButton()->click();
        waitForLog(u"2: closed: Withdrawn"_s);
        m_tour.waitFor([&] { return session.notificationArea().isNull(); }, u"it is gone from the screen"_s);
    }

    void waitForDesktop(const DesktopSession &session, const QString &name)
    {
        m_tour.waitFor([&] { return !session.notificationArea().isNull(); }, u"the daemon's window is on the screen"_s);
        // The window is there a little before it is painted.
        QImage image;
        m_tour.waitFor([&] { return isPainted(image = session.picture(), session.notificationArea()); },
                       u"it is painted"_s);
        const QString fileName = u"system-desktop-%1.png"_s.arg(name);
        image.save(m_tour.folder().filePath(fileName));
        m_tour.file(fileName);
    }

    void start(const QString &command)
    {
        m_commands.line()->setText(command);
        type(Qt::Key_Return);
    }

    void enter(const QString &command)
    {
        start(command);
        waitForEnd();
    }

    void waitForEnd()
    {
        const QString command = m_commands.line()->text();
        m_tour.waitFor([this] { return !m_commands.isRunning(); }, u"\"%1\" has ended"_s.arg(command));
        m_record += u"$ %1\n%2[%3]\n"_s.arg(command, m_commands.output().right(50), m_commands.status());
    }

    void waitForLog(const QString &line)
    {
        m_tour.waitFor([&] { return m_notifications.log().contains(line); }, u"notification "_s + line);
    }

    void type(int key)
    {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, {});
            QCoreApplication::sendEvent(m_commands.line(), &event);
        }
    }

    void picture(const QString &name) { m_tour.picture(m_page.window(), u"system-"_s + name); }

    SystemPage &m_page;
    Tour &m_tour;
    CommandPanel &m_commands;
    NotificationPanel &m_notifications;
    QString m_record;
};

void SystemPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
