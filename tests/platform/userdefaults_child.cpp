// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// A further process that writes settings, for the tests: userdefaults_child FILE PREFIX COUNT
// It sets PREFIX0, PREFIX1, ... one by one, and prints each number once that key is on the disk. FILE "standard" means
// the application's own store, which is left to be written at the end.

#include <dravelin/platform/userdefaults.h>

#include <QtCore/QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace {

int writeOneByOne(dravelin::UserDefaults &store, const QString &prefix, int count)
{
    for (int i = 0; i < count; ++i) {
        store.setObject(i, prefix + QString::number(i));
        for (int attempt = 0; !store.synchronize(); ++attempt) { // on a slow machine others may come first
            if (attempt == 20)
                return 1;
        }
        std::printf("%d\n", i);
        std::fflush(stdout);
    }
    return 0;
}

[[noreturn]] void changeAndEnd(int argc, char **argv, const QString &prefix, bool quit)
{
    auto *defaults = dravelin::UserDefaults::standardUserDefaults(); // there is no application object yet
    defaults->setObject(1, prefix + u'a');
    {
        QCoreApplication application(argc, argv);
        defaults->setWatching(true);
        defaults->setObject(2, prefix + u'b');
        if (quit) {
            QMetaObject::invokeMethod(&application, &QCoreApplication::quit, Qt::QueuedConnection);
            std::_Exit(application.exec());
        }
    }
    std::_Exit(0); // before the store's destructor could write
}

} // namespace

int main(int argc, char **argv)
{
    const QString prefix = QString::fromLocal8Bit(argv[2]);
    const QByteArray file(argv[1]);
    if (file == "end" || file == "quit")
        changeAndEnd(argc, argv, prefix, file == "quit");
    dravelin::UserDefaults store(QString::fromLocal8Bit(file));
    return writeOneByOne(store, prefix, QByteArray(argv[3]).toInt());
}
