// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// The gallery: Dravelin's subsystems to play with.
//
//   dravelin-gallery               opens the window
//   dravelin-gallery --tour DIR    lets every page do its job without a person, and writes pictures and texts to DIR

#include "diagnostics/crash.h"
#include "page.h"
#include "preferences/child.h"
#include "sound/recording.h"
#include "tour.h"
#include "window.h"

#include <dravelin/version.h>

#include <QtGui/QShortcut>
#include <QtWidgets/QApplication>

using namespace Qt::StringLiterals;

namespace {

void nameApplication()
{
    QCoreApplication::setOrganizationName(u"Dravelin"_s);
    QCoreApplication::setApplicationName(u"gallery"_s);
    QCoreApplication::setApplicationVersion(QLatin1String(DRAVELIN_VERSION));
}

/// The tour works on settings of its own, which its child processes share, and what it plays goes to a file.
int runTour(const QString &path)
{
    Tour tour{QDir(path)};
    QDir config(tour.folder().absoluteFilePath(u"config"_s));
    config.removeRecursively();
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(config.path()));
    recordSounds(tour.folder());
    Window window;
    static_cast<QWidget &>(window).show();
    const QList<Page *> pages = window.pages();
    for (Page *page : pages) {
        window.show(page);
        page->runTour(tour);
    }
    return tour.summarise();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 2 && qstrcmp(argv[1], "--child") == 0) {
        QCoreApplication application(argc, argv);
        nameApplication();
        return runChild(QCoreApplication::arguments().mid(2));
    }
    if (argc > 2 && qstrcmp(argv[1], "--crash") == 0)
        return runCrash(QString::fromLocal8Bit(argv[2]));
    QApplication application(argc, argv);
    nameApplication();
    if (const QStringList arguments = QCoreApplication::arguments(); arguments.value(1) == u"--tour"_s)
        return runTour(arguments.value(2, u"gallery-tour"_s));
    Window window;
    static_cast<QWidget &>(window).show();
    const QShortcut quit(QKeySequence::Quit, &window, &QApplication::closeAllWindows);
    return QApplication::exec();
}
