// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the preferences page does on its own: first start, changes, a process killed in the middle of its changes, a
// change by another process, export, and import into a second store.

#include "tour.h"

#include "preferences/child.h"
#include "preferences/decoded.h"
#include "preferences/preferencespage.h"

#include <dravelin/encoding/base64.h>
#include <dravelin/platform/userdefaults.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>

using namespace Qt::StringLiterals;
using dravelin::UserDefaults;

class PreferencesPage::TourSteps
{
public:
    TourSteps(PreferencesPage &page, Tour &tour) : m_page(page), m_tour(tour) {}

    void run()
    {
        firstStart();
        change();
        killSeries();
        followOtherProcess();
        const QString exported = exportAll();
        refuseBadImports();
        importIntoSecondStore(exported);
    }

private:
    void picture(const QString &name)
    {
        m_tour.waitFor([this] { return !m_page.m_refresh.isActive(); }, u"the store view is up to date"_s);
        m_tour.picture(m_page.window(), u"preferences-"_s + name);
    }

    [[nodiscard]] QVariant setting(const char *name) const { return m_page.m_settings->property(name); }

    void firstStart()
    {
        m_page.reset();
        m_tour.expect(setting("pages") == 12, u"the first start seeds the store with the defaults"_s);
        picture(u"1-first-start"_s);
    }

    void change()
    {
        m_page.m_settings->setProperty("showGrid", false);
        m_page.m_settings->setProperty("author", u"Grace Hopper ☂"_s);
        m_page.m_settings->setProperty("zoom", 2.5);
        m_page.m_settings->setProperty("paper", QVariant::fromValue(dravelin::Color(QColor(200, 220, 255))));
        const UserDefaults reread(UserDefaults::standardUserDefaults()->filePath());
        m_tour.expect(reread.objectForKey(u"author"_s) == u"Grace Hopper ☂"_s,
                      u"every change is in the file at once"_s);
        picture(u"2-changed"_s);
    }

    /// Ends a process with SIGKILL amid its changes and looks at what a new one finds.
    void killSeries()
    {
        QProcess series;
        series.start(QCoreApplication::applicationFilePath(), {u"--child"_s, u"series"_s});
        int reported = 0;
        m_tour.waitFor(
            [&] {
                while (series.canReadLine())
                    reported = series.readLine().trimmed().toInt();
                return reported >= 50;
            },
            u"another process saves a series of changes"_s);
        series.kill();
        series.waitForFinished();
        while (series.canReadLine())
            reported = series.readLine().trimmed().toInt();

        const QString report = runChildToEnd({u"report"_s});
        const int pages = report.section(u"pages - "_s, 1).section(u'\n', 0, 0).toInt();
        m_tour.expect(
            pages >= pagesInRound(reported),
            u"after SIGKILL, everything reported as saved is restored (%1 changes, pages %2)"_s.arg(reported).arg(
                pages));
        m_tour.text(u"preferences-3-after-kill"_s,
                    u"The process had reported %1 rounds of changes when SIGKILL ended it; round %1 sets pages to %2.\n"
                    "A new process restored:\n\n%3"_s.arg(reported)
                        .arg(pagesInRound(reported))
                        .arg(report));
    }

    void followOtherProcess()
    {
        runChildToEnd({u"set"_s, u"author"_s, u"another process"_s});
        m_tour.waitFor([this] { return setting("author") == u"another process"_s; },
                       u"the window follows what another process changes"_s);
        picture(u"4-followed"_s);
    }

    QString exportAll()
    {
        const QString exported = m_page.m_manager->exportPreferences();
        m_tour.text(u"preferences-5-export"_s, decodedExport(exported));
        return exported;
    }

    void refuseBadImports()
    {
        const QString otherVersion = dravelin::encodeBase64WithString(dravelin::encodeBase64WithString(u"0.0"_s));
        QString messages;
        for (const QString &text : {otherVersion, u"not Base64 !"_s, QString()}) {
            m_tour.expect(!m_page.importText(text), u"a text that is no export of this version is refused"_s);
            messages += m_page.m_message->text() + u'\n';
        }
        m_tour.text(u"preferences-6-refused"_s, messages);
        picture(u"6-refused"_s);
    }

    void importIntoSecondStore(const QString &exported)
    {
        const QString author = setting("author").toString();
        const QString path = m_tour.folder().absoluteFilePath(u"second-store.plist"_s);
        QFile::remove(path);
        const auto previous = UserDefaults::setStandardUserDefaults(std::make_shared<UserDefaults>(path));
        m_page.open();
        m_tour.expect(setting("author") == u"Ada"_s, u"a second store starts with the defaults"_s);
        m_tour.expect(m_page.importText(exported) && setting("author") == author,
                      u"the export is imported into a second store"_s);
        picture(u"7-imported"_s);
        UserDefaults::setStandardUserDefaults(previous);
        m_page.open();
    }

    QString runChildToEnd(const QStringList &arguments)
    {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), QStringList(u"--child"_s) + arguments);
        m_tour.expect(child.waitForFinished() && child.exitCode() == 0, u"child process: "_s + arguments.join(u' '));
        return QString::fromUtf8(child.readAllStandardOutput());
    }

    PreferencesPage &m_page;
    Tour &m_tour;
};

void PreferencesPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
