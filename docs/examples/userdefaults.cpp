// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTextStream>

//! [test]
// What an application tests: settings of its own, which it reads where the user's are.
int rememberedPages() { return dravelin::UserDefaults::standardUserDefaults()->objectForKey("pages").toInt(); }

bool testForgetsPages()
{
    const dravelin::ScopedUserDefaults isolated; // a store of its own, gone at the end of the scope
    return rememberedPages() == 0;
}
//! [test]

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);

    //! [names]
    QCoreApplication::setOrganizationName("Example");
    QCoreApplication::setApplicationName("Sketch"); // both before the store is first used
    auto *defaults = dravelin::UserDefaults::standardUserDefaults();
    //! [names]
    out << "file " << QFileInfo(defaults->filePath()).fileName() << '\n';

    //! [domains]
    defaults->registerDefaults({{"pages", 1}, {"author", "nobody"}}); // in memory, for keys without a value
    defaults->setObject(12, "pages");                                 // the application's own value
    out << defaults->objectForKey("pages").toInt() << " pages by " << defaults->objectForKey("author").toString()
        << '\n';
    defaults->removeObjectForKey("pages");
    out << "back to " << defaults->objectForKey("pages").toInt() << '\n';
    //! [domains]

    //! [batch]
    {
        const dravelin::UserDefaults::Batch batch(defaults);
        defaults->setObject(12, "pages");
        defaults->synchronize(); // does nothing in a batch
        defaults->setObject(QVariantMap{{"x", 10}, {"opened", QDateTime(QDate(2024, 2, 29), QTime(8, 30))}}, "window");
    } // one write for both
    //! [batch]
    out << defaults->objectForKey("window").toMap().value("x").typeName() << '\n';

    //! [watching]
    defaults->setWatching(true);
    QObject::connect(defaults, &dravelin::UserDefaults::defaultsChanged, [&](const QStringList &keys) {
        out << keys.join(' ') << " changed to " << defaults->objectForKey(keys.first()).toString() << '\n';
    });
    //! [watching]
    dravelin::UserDefaults otherProcess(defaults->filePath());
    otherProcess.setObject(13, "pages");
    otherProcess.synchronize();
    while (defaults->objectForKey("pages").toInt() != 13)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);

    out << (testForgetsPages() ? "the test saw none of it" : "the test saw the user's settings") << '\n';

    //! [damaged]
    QFile file(defaults->filePath());
    if (file.open(QIODevice::WriteOnly))
        file.write("not a property list"); // an editor gone wrong, a disk error
    file.close();
    defaults->setObject("Ada", "author");
    defaults->synchronize(); // sets the file aside, writes a new one
    //! [damaged]
    const QFileInfo info(defaults->filePath());
    const QStringList aside = info.dir().entryList({info.fileName() + ".damaged-*"});
    const dravelin::UserDefaults nextStart(defaults->filePath());
    out << aside.size() << " file set aside, " << nextStart.objectForKey("pages").toInt() << " pages by "
        << nextStart.objectForKey("author").toString() << '\n';
}
