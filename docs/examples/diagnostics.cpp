// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>
#include <QtGui/QPageLayout>
#include <QtWidgets/QApplication>

static QTextStream out(stdout);

//! [tracked]
class Document : public dravelin::Object
{
    Q_OBJECT

public:
    Document() { dravelin::_trackObject(this); }
};
//! [tracked]

/// The console's lines end with a carriage return.
static QString readable(QString text) { return text.replace('\r', '\n'); }

static void useConsole(QWidget *window, QWidget *view)
{
    const double zoom = 1.5;
    //! [console]
    dravelin::showConsoleNextToWindow(window->frameGeometry());
    dravelin::console("loaded");
    dravelin::consoleRect(view->geometry());
    dravelin::consoleFloat(zoom);
    dravelin::consoleRange({3, 4});
    //! [console]
    //! [text]
    const QString text = dravelin::currentConsole()->text();
    //! [text]
    out << readable(text);
    dravelin::killConsole();
}

static void trackObjects()
{
    //! [tracker]
    dravelin::_initializeObjectTracker(); // off until then
    auto first = std::make_unique<Document>();
    dravelin::_takeSnapCount();
    auto second = std::make_unique<Document>(), third = std::make_unique<Document>();
    first.reset();
    const QString report = dravelin::_dumpTrackedObjects();
    //! [tracker]
    out << readable(report);
}

static void dumpThings()
{
    //! [dumps]
    const QPageLayout layout(QPageSize(QPageSize::Letter), QPageLayout::Portrait, QMarginsF());
    dravelin::console(dravelin::dump(layout));
    dravelin::console(dravelin::dumpScreens());    // frames, with y upwards
    dravelin::console(dravelin::dumpWindowList()); // of all applications
    //! [dumps]
    out << readable(dravelin::dump(layout));
}

int main(int argc, char **argv)
{
    //! [main]
    const QApplication application(argc, argv);
    dravelin::installErrorHandlers(); // early, on the main thread
    //! [main]

    QWidget window;
    QWidget view(&window);
    view.setGeometry(0, 0, 640, 480);
    useConsole(&window, &view);
    trackObjects();
    dumpThings();

    //! [asked]
    const QString memory = dravelin::reportMemory();   // such as "31452.00 k", of resident memory
    const QString stack = dravelin::debugStackTrace(); // a line per frame, from here outwards
    //! [asked]
    out << memory.endsWith(" k") << ' ' << stack.contains("main") << '\n';
}

#include "diagnostics.moc"
