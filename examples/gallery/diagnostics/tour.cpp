// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the diagnostics page does on its own: the console beside the window, many lines, and a report of every crash.

#include "tour.h"

#include "diagnostics/crash.h"
#include "diagnostics/diagnosticspage.h"

#include <dravelin/diagnostics.h>
#include <dravelin/platform/log.h>

#include <QtGui/QScreen>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace {

/// Keeps the tour's own output readable.
class Silence : public dravelin::LogSink
{
public:
    void write(QtMsgType, const QString &) override {}
};

/// A window manager moves what would reach beyond the screen.
bool isMovedByManager(const QWidget *window, const QRect &place)
{
    return window->frameGeometry() != window->geometry() && !window->screen()->geometry().contains(place);
}

int shownLines() { return dravelin::currentConsole()->textDisplay()->blockCount() - 1; }

} // namespace

void DiagnosticsPage::runTour(Tour &tour)
{
    const auto previous = dravelin::LogSink::setCurrent(std::make_shared<Silence>());
    openConsole();
    printValues();
    tour.waitFor([] { return shownLines() == 7; }, u"the console shows seven lines"_s);
    const QWidget *console = dravelin::currentConsole()->window();
    const QRect beside(window()->frameGeometry().topRight() + QPoint(21, 0), console->frameGeometry().size());
    if (console->frameGeometry() != beside && isMovedByManager(window(), beside))
        tour.did(u"too narrow a screen for the console beside the window"_s);
    else
        tour.expect(console->frameGeometry() == beside, u"the console is 20 to the right of the window"_s);
    tour.picture(dravelin::currentConsole()->window(), u"diagnostics-1-console"_s);
    tour.text(u"diagnostics-1-console"_s, dravelin::currentConsole()->text().replace(u'\r', u'\n'));

    printManyLines();
    tour.waitFor([] { return shownLines() == 100'007; }, u"100,000 lines come into the open console"_s);
    tour.expect(dravelin::currentConsole()->find(u"line 77777"_s), u"a line is found in the console"_s);
    tour.picture(dravelin::currentConsole()->window(), u"diagnostics-2-found"_s);
    dravelin::killConsole();
    dravelin::LogSink::setCurrent(previous);

    showMemory();
    for (int i = 0; i < 3; ++i)
        createDocument();
    takeSnapshot();
    createDocument();
    createDocument();
    destroyDocument();
    tour.expect(m_report->toPlainText().contains(u"Document - Snap:3 Count:4 Delta:1"_s),
                u"the tracker counts what was created and not destroyed"_s);
    tour.picture(window(), u"diagnostics-3-tracked"_s);
    tour.text(u"diagnostics-3-tracked"_s, m_report->toPlainText());
    showText(dravelin::dumpScreens() + dravelin::dumpWindowList());
    tour.expect(m_report->toPlainText().contains(u"{{"_s), u"the screens are dumped"_s);
    tour.text(u"diagnostics-3-screens"_s, m_report->toPlainText());

    const QStringList ways = waysToCrash();
    for (const QString &way : ways) {
        crash(way);
        tour.waitFor([this] { return m_child.state() == QProcess::NotRunning; }, u"a process ends by "_s + way);
        takeReport();
        const QString report = m_report->toPlainText();
        tour.expect(report.contains(u"Signal SIG"_s) && report.contains(u"crash.cpp:"_s), u"it reports its end"_s);
        tour.text(u"diagnostics-4-"_s + way, report);
    }
    crash(u"exception"_s);
    tour.waitFor([this] { return m_child.state() == QProcess::NotRunning; }, u"a process ends by an exception"_s);
    tour.picture(window(), u"diagnostics-4-report"_s);
}
