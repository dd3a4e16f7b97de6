// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/platform.h>

#include <zlib.h>

using namespace dravelin;

namespace {

class Document : public Object
{
    Q_OBJECT
    Q_PROPERTY(int pages MEMBER pages)

public:
    int pages = 1;
    int saves = 0;

    Q_INVOKABLE void saved(dravelin::Notification *) { ++saves; }
};

void objectsAreShared()
{
    auto document = std::make_shared<Document>();
    CHECK(retain(document.get()) == document);
    setValue(document.get(), 2, "pages");
    CHECK(valueForKey(document.get(), "pages") == 2 && valueForKeyPath(document.get(), "pages") == 2);
}

void notificationsArrive()
{
    Document document;
    NotificationCenter center;
    center.addObserver(&document, "saved:", "saved");
    center.postNotificationName("saved");
    Notification notification("saved");
    center.postNotification(&notification);
    methodForSelector(&document, "saved:")(&document, &notification);
    CHECK(document.saves == 3);
    center.removeObserver(&document, "saved");
    center.removeObserver(&document);
    center.postNotificationName("saved");
    CHECK(document.saves == 3);
}

void theBundleIsRead()
{
    auto &bundle = Bundle::mainBundle();
    bundle.setObject("2041", "CFBundleVersion");
    CHECK(bundle.objectForInfoDictionaryKey("CFBundleVersion") == "2041");
    CHECK(bundle.pathForResource("none", "txt").isNull() && bundle.pathForSoundResource("none").isNull());
}

void geometryHasText()
{
    CHECK(NSStringFromPoint({1, 2}) == "{1, 2}" && NSStringFromSize({1, 2}) == "{1, 2}");
    CHECK(NSStringFromRect({1, 2, 3, 4}) == "{{1, 2}, {3, 4}}");
    CHECK((NSRangeFromString(NSStringFromRange({1, 2})) == Range{1, 2}));
}

void exceptionsCrossTheLibrary()
{
    try {
        throw Exception(QString::fromLatin1(NSRangeException), QStringLiteral("no page 3"));
    } catch (const std::exception &e) {
        CHECK(qstrcmp(e.what(), "NSRangeException: no page 3") == 0);
    }
    const auto caught = [] {
        try {
            Q_UNUSED(valueForKey(nullptr, "pages"))
            QObject object;
            setValue(&object, 1, "noSuchProperty");
            return false;
        } catch (const Exception &e) {
            return e.name() == NSUndefinedKeyException;
        }
    };
    CHECK(caught());
}

void zlibComesAlong() { CHECK(crc32(0, reinterpret_cast<const Bytef *>("123456789"), 9) == 0xCBF43926); }

} // namespace

void usePlatform()
{
    objectsAreShared();
    notificationsArrive();
    theBundleIsRead();
    geometryHasText();
    exceptionsCrossTheLibrary();
    zlibComesAlong();
}

#include "platform.moc"
