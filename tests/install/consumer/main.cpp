// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// A small application as its author would write it: only installed headers, only what Dravelin's target brings along.

#include <dravelin/dravelin.h>

#include <QtCore/QCoreApplication>

#include <zlib.h>

#include <cstdio>
#include <cstdlib>

namespace {

class Settings : public dravelin::PreferenceData
{
    Q_OBJECT
    Q_PROPERTY(double zoom MEMBER zoom NOTIFY zoomChanged)

public:
    void resetDefaultValues() override { setProperty("zoom", 1.0); }
    void installPreferenceItems() override { addDoubleWithName("zoom"); }
    double zoom = 0;

Q_SIGNALS:
    void zoomChanged();
};

void check(bool holds, const char *what)
{
    if (!holds) {
        std::printf("The consumer fails: %s\n", what);
        std::exit(1);
    }
}

void settingsAreKept()
{
    const dravelin::ScopedUserDefaults isolated;
    {
        const auto settings = std::make_shared<Settings>();
        const dravelin::PreferenceManager manager(settings);
        check(settings->zoom == 1, "settings start with their defaults");
        settings->setProperty("zoom", 2.5);
    }
    const auto settings = std::make_shared<Settings>();
    const dravelin::PreferenceManager manager(settings);
    check(settings->zoom == 2.5, "a changed setting is restored");
}

void exceptionsCrossTheLibrary()
{
    try {
        throw dravelin::Exception(QString::fromLatin1(dravelin::NSRangeException), QStringLiteral("no page 3"));
    } catch (const std::exception &e) {
        check(qstrcmp(e.what(), "NSRangeException: no page 3") == 0, "an exception names itself and its reason");
    }
}

void zlibComesAlong()
{
    check(crc32(0, reinterpret_cast<const Bytef *>("123456789"), 9) == 0xCBF43926, "zlib's crc32");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    settingsAreKept();
    exceptionsCrossTheLibrary();
    zlibComesAlong();
    std::puts("Dravelin " DRAVELIN_VERSION ": the consumer works");
}

#include "main.moc"
