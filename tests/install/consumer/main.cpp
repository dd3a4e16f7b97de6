// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// A small application as its author would write it: only installed headers, only what Dravelin's target brings along.

#include <dravelin/dravelin.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QColor>
#include <QtGui/QImage>

#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <vector>

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

class Settings : public dravelin::PreferenceData
{
    Q_OBJECT
    Q_PROPERTY(bool showGrid MEMBER showGrid NOTIFY showGridChanged)
    Q_PROPERTY(double zoom MEMBER zoom NOTIFY zoomChanged)
    Q_PROPERTY(dravelin::Color paper MEMBER paper NOTIFY paperChanged)

public:
    void resetDefaultValues() override
    {
        setProperty("showGrid", true);
        setProperty("zoom", 1.0);
        setProperty("paper", QVariant::fromValue(dravelin::Color::srgb(1, 0.98, 0.9)));
    }
    void installPreferenceItems() override
    {
        addBooleanWithName("showGrid");
        addPreference(&Settings::zoomChanged);
        addNSColorWithName("paper");
    }
    bool showGrid = false;
    double zoom = 0;
    dravelin::Color paper;

Q_SIGNALS:
    void showGridChanged();
    void zoomChanged();
    void paperChanged();
};

class Watcher : public dravelin::Object
{
    Q_OBJECT

public:
    QString seen;

    Q_INVOKABLE void pagesChanged(dravelin::KVOProxy *proxy)
    {
        seen += proxy->getOldValue().toString() + '>' + proxy->getNewValue().toString() + ' ';
    }
    Q_INVOKABLE void entered(qint64 info) { seen += QString::number(info); }
    Q_INVOKABLE void documentSavedAction(dravelin::Notification *notification) { seen += notification->name(); }
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

void changesAndNotificationsArrive()
{
    Document document;
    Watcher watcher;
    const dravelin::KVOProxy byName(&document, "pages", &watcher, "pagesChanged:");
    const dravelin::KVOProxy checked(&document, "pages", &watcher, &Watcher::pagesChanged);
    dravelin::ObserverProxy observer(&watcher);
    observer.addObserverForKey("documentSaved");
    dravelin::setValue(&document, "2", "pages");
    dravelin::ObserverProxy::sendNotification("documentSaved", &document);
    check(watcher.seen == "1>2 1>2 documentSaved", "observers are called by name and by member function");
}

void statesAreEntered()
{
    enum { Loading, Ready };
    Watcher watcher;
    auto machine = std::make_shared<dravelin::StateMachine>();
    machine->addState(Loading, {&watcher, "entered:"});
    machine->addState(Ready, {&watcher, &Watcher::entered});
    machine->reset();
    while (watcher.seen.isEmpty())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    dravelin::StateMachineMutex downloads(machine, 2, Ready, 7);
    check(!downloads.decrementMutex() && downloads.decrementMutex(), "the last event is known");
    while (watcher.seen.size() < 2)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    check(watcher.seen == "07" && machine->currentState() == Ready, "states are entered from the event loop");
}

void changesAreUndone()
{
    dravelin::UndoManager manager;
    Document document;
    auto item = dravelin::createUndoItem(
        &manager, &document, [&](dravelin::UndoItem *undone) { document.pages = int(undone->getIntegerPairItem1()); },
        true, "Insert Page");
    item->addIntegerPairItem1(document.pages, 2);
    document.pages = 2;
    check(manager.undoMenuItemTitle() == "Undo Insert Page", "a step is named");
    manager.undo();
    check(document.pages == 1 && !manager.canUndo(), "a step is undone");
}

void leaksAreFound()
{
    dravelin::_initializeObjectTracker();
    auto document = std::make_unique<Document>();
    dravelin::_trackObject(document.get());
    dravelin::_takeSnapCount();
    check(dravelin::_dumpTrackedObjects().endsWith("Document - Snap:1 Count:1 Delta:0\r"), "an object is tracked");
    document.reset();
    check(dravelin::_dumpTrackedObjects().isEmpty(), "an object that is gone is forgotten");
}

void settingsAreKept()
{
    const dravelin::ScopedUserDefaults isolated;
    QString exported;
    {
        auto settings = std::make_shared<Settings>();
        const dravelin::PreferenceManager manager(settings);
        settings->setProperty("zoom", 2.5);
        settings->setProperty("paper", QVariant::fromValue(dravelin::Color(QColor(255, 0, 0))));
        exported = manager.exportPreferences();
    }
    auto settings = std::make_shared<Settings>();
    dravelin::PreferenceManager manager(settings);
    check(settings->zoom == 2.5 && settings->showGrid, "settings are restored");
    check(settings->paper == dravelin::Color::srgb(1, 0, 0), "a colour is restored");
    check(dravelin::colorToString(settings->paper) == "1.000 0.000 0.000 1.000", "a colour has a text form");

    settings->setProperty("zoom", 4.0);
    QString message;
    check(manager.importPreferences(exported, &message) && settings->zoom == 2.5, "an export is imported");
    check(dravelin::UserDefaults(isolated.store()->filePath()).objectForKey("zoom").toString().startsWith("2.5"),
          "a change is on disk");
    dravelin::setBOOLDefault("seenTour", true);
    check(dravelin::getBOOLdefault("seenTour", false), "a single default is set");
}

void bytesHaveText()
{
    const QByteArray bytes("Sketch\0\xFF", 8);
    const QString text = dravelin::encodeBase64WithData(bytes);
    check(text == "U2tldGNoAP8=", "bytes in Base64");
    check(dravelin::decodeBase64ToData(text) == bytes, "Base64 gives the bytes back");
    check(dravelin::decodeBase64FromBytes(dravelin::encodeBase64ToBytes(bytes)) == bytes, "so does Base64 as bytes");
}

void dataIsStored()
{
    check(dravelin::zlibDecompressed(dravelin::zlibCompressed("page"), 4) == "page",
          "a zlib stream gives the bytes back");
    dravelin::DataEncoder encoder;
    encoder.addInteger("pages", 12);
    const auto copy = dravelin::DataEncoder::initWithData(encoder.encodeData());
    check(copy.getInteger("pages") == 12, "a blob gives its values back");
    const auto price = dravelin::DecimalNumber::withPrecision(2);
    price->setStringValue("12.5");
    check(price->getStringValue() == "12.50", "a decimal number has its decimals");
}

void documentsAreXml()
{
    const auto document = dravelin::createEmptyXMLDocument();
    const auto page = dravelin::addXMLElement(document->rootElement(), "page");
    dravelin::addXMLAttribute(page, "number", "1");
    const auto copy = dravelin::createXmlFromEncodedData(dravelin::encodeXMLData(document->XMLData()));
    qsizetype position = 0;
    const auto found = dravelin::findXmlNode(copy->rootElement(), position, "page");
    check(dravelin::getXMLAttribute(found, "number") == "1", "a document comes back from its text");
    int pages = 0;
    dravelin::XMLContentParser parser;
    parser.addHandler("page", [&](const auto &) { ++pages; });
    parser.parse(copy->rootElement());
    check(pages == 1, "a handler gets its elements");
}

struct Chapter : dravelin::Coding
{
    QString title;
    std::shared_ptr<Chapter> next;

    void encodeWithCoder(dravelin::KeyedArchiver &coder) const override
    {
        dravelin::encodeString(coder, title, "title");
        coder.encodeObject(next, "next");
    }
    bool initWithCoder(dravelin::KeyedUnarchiver &coder) override
    {
        title = dravelin::decodeStringForKey(coder, "title");
        next = coder.decodeObjectForKey<Chapter>("next");
        return true;
    }
};

void objectsAreArchived()
{
    dravelin::registerCodingClass<Chapter>("Chapter");
    auto chapter = std::make_shared<Chapter>();
    chapter->title = "Circles";
    chapter->next = chapter;
    const QByteArray archive = dravelin::KeyedArchiver::archivedDataWithRootObject(chapter);
    chapter->next = nullptr;
    const auto copy = dravelin::KeyedUnarchiver::unarchiveObjectWithData<Chapter>(archive);
    check(copy && copy->title == "Circles" && copy->next == copy, "a circle of objects survives");
    copy->next = nullptr;
}

void numbersAreSorted()
{
    dravelin::NativeInt32Array numbers(200);
    std::iota(numbers.begin(), numbers.end(), -100);
    numbers.sort(false);
    check(numbers.dataAtIndex(0) == 99 && numbers.count() == 200, "an array is sorted");
}

void picturesAreFiltered()
{
    QImage photo(8, 8, QImage::Format_RGB32);
    photo.fill(Qt::red);
    dravelin::FilterProcessor chain(2);
    chain.addFilter(dravelin::saturationFilter(0), 0, 2);
    chain.addFilter(dravelin::colorInvertFilter(), 0, 1);
    const QColor color = chain.applyFilters(photo).pixelColor(3, 3);
    check(color.red() == color.blue() && chain.filterCount() == 2, "a chain of filters is applied");
    dravelin::ImageOverlay overlay(photo);
    check(overlay.getOverlayImage().isNull(), "there is no overlay before a tint");
    overlay.colorImageWithHue(0.6F, 0.8F);
    check(overlay.getOverlayImage().toImage().size() == photo.size(), "an icon is tinted");
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

void soundsArePlayed()
{
    dravelin::SoundDepot depot;
    const auto silence = dravelin::SoundData::fromSamples(std::vector<qint16>(80), 1, 8000);
    depot.addSound(std::make_shared<dravelin::Sound>(silence, 7, 0b01));
    check(!depot.playSound(7), "no category is on at first");
    depot.setCurrentCategory(0b11);
    bool ended = false;
    check(depot.playSound(7, [&] { ended = true; }), "a sound starts");
    while (!ended)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    check(!depot.getSound(7)->isPlaying(), "a sound ends");
    depot.fadeOutAllSounds(1.5f, {});
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    objectsAreShared();
    changesAndNotificationsArrive();
    statesAreEntered();
    changesAreUndone();
    leaksAreFound();
    settingsAreKept();
    bytesHaveText();
    dataIsStored();
    documentsAreXml();
    objectsAreArchived();
    numbersAreSorted();
    picturesAreFiltered();
    soundsArePlayed();
    exceptionsCrossTheLibrary();
    zlibComesAlong();
    std::puts("Dravelin " DRAVELIN_VERSION ": the consumer works");
}

#include "main.moc"
