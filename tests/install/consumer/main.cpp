// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// A small application as its author would write it: only installed headers, only what Dravelin's target brings along.

#include <dravelin/dravelin.h>

#include <QtCore/QCoreApplication>

#include <zlib.h>

#include <cstdio>
#include <cstdlib>

namespace {

class Document : public dravelin::Object
{
    Q_OBJECT
    Q_PROPERTY(int pages MEMBER pages NOTIFY pagesChanged)

public:
    int pages = 1;

Q_SIGNALS:
    void pagesChanged();
};

void check(bool holds, const char *what)
{
    if (!holds) {
        std::printf("The consumer fails: %s\n", what);
        std::exit(1);
    }
}

void objectsAreShared()
{
    auto document = std::make_shared<Document>();
    check(dravelin::retain(document.get()) == document, "a shared object is retained");
    check(document->setProperty("pages", 2) && document->pages == 2, "a property of a subclass is set");
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
    objectsAreShared();
    exceptionsCrossTheLibrary();
    zlibComesAlong();
    std::puts("Dravelin " DRAVELIN_VERSION ": the consumer works");
}

#include "main.moc"
