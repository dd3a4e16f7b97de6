// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// A further process that writes settings, for the tests: userdefaults_child FILE PREFIX COUNT
// It sets PREFIX0, PREFIX1, ... one by one, and prints each number once that key is on the disk. FILE "standard" means
// the application's own store, which is left to be written at the end.

#include <dravelin/platform/userdefaults.h>

#include <QtCore/QCoreApplication>

#include <cstdio>

namespace {

int writeOneByOne(dravelin::UserDefaults &store, const QString &prefix, int count)
{
    for (int i = 0; i < count; ++i) {
        store.setObject(i, prefix + QString::number(i));
        if (!store.synchronize())
            return 1;
        std::printf("%d\n", i);
        std::fflush(stdout);
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QString prefix = QString::fromLocal8Bit(argv[2]);
    if (qstrcmp(argv[1], "standard") == 0) {
        // Without an application object at first.
        dravelin::UserDefaults::standardUserDefaults()->setObject(1, prefix + u'a');
        const QCoreApplication application(argc, argv);
        dravelin::UserDefaults::standardUserDefaults()->setWatching(true);
        dravelin::UserDefaults::standardUserDefaults()->setObject(2, prefix + u'b');
        return 0;
    }
    dravelin::UserDefaults store(QString::fromLocal8Bit(argv[1]));
    return writeOneByOne(store, prefix, QByteArray(argv[3]).toInt());
}
