// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/diagnostics.h>

#include <QtGui/QPageLayout>
#include <QtWidgets/QPlainTextEdit>

#include <csignal>

using namespace dravelin;

namespace {

void leaksAreFound()
{
    _initializeObjectTracker();
    auto document = std::make_unique<QObject>();
    _trackObject(document.get());
    _takeSnapCount();
    CHECK(_dumpTrackedObjects().endsWith("QObject - Snap:1 Count:1 Delta:0\r"));
    document.reset();
    _trimObjectList();
    CHECK(_dumpTrackedObjects().isEmpty());
    _clearTrackedObjects();

    QObject kept;
    DebugObjectContainer container;
    container.addObject(&kept);
    container.trimObjects();
    container.takeSnapShotCount();
    CHECK(container.snapShotCount() == 1 && container.report().contains("Count:1"));
    DebugObjectContainer copy;
    copy.setObjectLookup(container.objectLookup());
    copy.setSnapShotCount(2);
    CHECK(copy.objectLookup().size() == 1 && copy.snapShotCount() == 2);
}

void theConsoleShowsText()
{
    initializeConsole();
    showConsole();
    showConsoleNextToWindow({0, 0, 100, 100});
    console("loaded");
    consoleRect({1, 2, 3, 4});
    consoleSize({5, 6});
    consolePoint({7, 8});
    consoleRange({9, 10});
    consoleFloat(0.5F);
    consoleInteger(11);
    const QString text = currentConsole()->text();
    for (const char *part : {"loaded", "1", "6", "8", "10", "0.5", "11"})
        CHECK(text.contains(part));
    clearConsole();
    CHECK(currentConsole()->text().isEmpty());
    inhibitConsole(true);
    console("unheard");
    CHECK(currentConsole()->text().isEmpty());
    inhibitConsole(false);
    killConsole();
    CHECK(!currentConsole());
}

class CountedWindow : public ConsoleWindowController
{
public:
    int loads = 0;

protected:
    void windowDidLoad() override
    {
        ++loads;
        ConsoleWindowController::windowDidLoad();
    }
};

void consoleWindowsAreObjects()
{
    CountedWindow controller;
    CHECK(controller.window() && controller.loads == 1);
    controller.showWindow();
    controller.appendText("text");
    CHECK(controller.text() == "text" && controller.textDisplay());
    controller.clearButtonAction();
    controller.close();
    CHECK(!controller.window()->isVisible());
    QPlainTextEdit other;
    controller.setTextDisplay(&other);
    CHECK(controller.textDisplay() == &other);
    CHECK(ConsoleWindowController("none").text().isEmpty());
}

class MarkedView : public DebugView
{
public:
    int drawings = 0;

    void drawRect(QPainter &painter, const QRect &rect) override
    {
        ++drawings;
        DebugView::drawRect(painter, rect);
    }
};

void theSystemIsDescribed()
{
    CHECK(!dumpWindowList().contains("no such window") && !dumpScreens().isEmpty());
    CHECK(dump(QPageLayout()).contains(':'));
    MarkedView view;
    view.resize(40, 40);
    CHECK(!view.grab().isNull() && view.drawings == 1);
    CHECK(!debugStackTrace().isEmpty() && !reportMemory().isEmpty());
    installErrorHandlers();
    handleSignal(SIGPIPE);
    exceptionHandler(Exception("Consumer", "reported, not thrown"));
}

} // namespace

void useDiagnostics()
{
    leaksAreFound();
    theConsoleShowsText();
    consoleWindowsAreObjects();
    theSystemIsDescribed();
}
