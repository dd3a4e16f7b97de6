// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

static QTextStream out(stdout);

//! [stand in]
class DeniedBookmarks : public dravelin::BookmarkService
{
public:
    QByteArray create(const QUrl &, quint64, QString *error) override
    {
        *error = "the user has said no";
        return {};
    }
    QUrl resolve(const QByteArray &, quint64, bool *, QString *error) override
    {
        *error = "the user has said no";
        return {};
    }
    bool startAccess(const QUrl &) override { return false; }
    void stopAccess(const QUrl &url) override { out << "stopped: " << url.fileName() << '\n'; }
};
//! [stand in]

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir temporary;
    const QDir folder = temporary.filePath("1/2/3");
    QDir().mkpath(folder.path());
    QFile file(folder.filePath("plan.txt"));
    if (!file.open(QIODevice::WriteOnly) || file.write("four") != 4)
        return 1;
    file.close();
    auto *defaults = dravelin::UserDefaults::standardUserDefaults();

    {
        const QUrl dialogUrl = QUrl::fromLocalFile(file.fileName());
        //! [choose]
        dravelin::SecurityScopedBookmark chosen(dialogUrl); // from a QFileDialog
        defaults->setObject(chosen.getBookmarkData(), "plan");
        //! [choose]
    }
    file.rename(folder.filePath("plan-b.txt"));

    //! [again]
    const QByteArray stored = defaults->objectForKey("plan").toByteArray();
    dravelin::SecurityScopedBookmark plan(stored);
    const QUrl url = plan.getSecurityUrl();                 // empty when the file is lost
    if (!url.isEmpty() && plan.getBookmarkData() != stored) // it was stale, and has been renewed
        defaults->setObject(plan.getBookmarkData(), "plan");
    //! [again]
    out << "found: " << url.fileName() << '\n';

    //! [access]
    plan.stopAccess();
    out << "access: " << plan.hasSecurityAccess() << '\n';
    const QUrl same = plan.getSecurityUrl(); // starts it again
    out << "access: " << plan.hasSecurityAccess() << '\n';
    //! [access]

    //! [service]
    const auto service = dravelin::BookmarkService::current();
    bool stale = false;
    QString error;
    const QUrl now = service->resolve(stored, 0, &stale, &error);
    if (const auto contents = dravelin::BookmarkService::contents(stored))
        out << contents->url.fileName() << " of " << *contents->size << " bytes is now " << now.fileName()
            << (stale ? ", stale" : "") << '\n';
    if (service->resolve("noise", 0, &stale, &error).isEmpty())
        out << error << '\n';
    //! [service]

    //! [setting]
    dravelin::BookmarkService::setCurrent(std::make_shared<DeniedBookmarks>());
    {
        dravelin::SecurityScopedBookmark denied(stored);
        out << "denied: " << denied.getSecurityUrl().isEmpty() << '\n';
        const dravelin::SecurityScopedBookmark chosen(QUrl::fromLocalFile("/home/me/new.txt"));
    }
    dravelin::BookmarkService::setCurrent({}); // the default again
    //! [setting]
}
