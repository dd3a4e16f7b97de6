// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>

static QTextStream out(stdout);

//! [observed]
class Page : public dravelin::Object
{
    Q_OBJECT
    Q_PROPERTY(double margin MEMBER margin NOTIFY marginChanged)

public:
    double margin = 10;

Q_SIGNALS:
    void marginChanged();
};

class Document : public dravelin::Object
{
    Q_OBJECT
    Q_PROPERTY(Page *page MEMBER page NOTIFY pageChanged)

public:
    Page *page = nullptr;

Q_SIGNALS:
    void pageChanged();
};
//! [observed]

class Ruler : public dravelin::Object
{
    Q_OBJECT

public:
    //! [ruler]
    Q_INVOKABLE void marginChanged(dravelin::KVOProxy *proxy)
    {
        resize(proxy->getOldValue().toReal(), proxy->getNewValue().toReal());
    }
    //! [ruler]
    void resize(double from, double to) { out << "margin " << from << " to " << to << '\n'; }
};

//! [window]
class Window : public dravelin::Object
{
    Q_OBJECT

public:
    Q_INVOKABLE void documentSavedAction(dravelin::Notification *notification)
    {
        out << notification->name() << " by " << notification->object()->objectName() << '\n';
    }
    void closed() { out << "closed\n"; }
};
//! [window]

void observeProperties()
{
    Page first, second;
    second.margin = 20;
    Document *document = new Document;
    document->page = &first;
    Ruler ruler;

    //! [proxy]
    dravelin::KVOProxy byName(document, "page.margin", &ruler, "marginChanged:");
    dravelin::KVOProxy checked(document, "page.margin", &ruler, &Ruler::marginChanged);
    dravelin::KVOProxy callable(document, "page.margin", &ruler, [](dravelin::KVOProxy *proxy) {
        out << proxy->keyPath() << " is " << proxy->getNewValue().toReal() << '\n';
    });
    first.setProperty("margin", 15);                             // told three times
    document->setProperty("page", QVariant::fromValue(&second)); // the margin changes with the page
    first.setProperty("margin", 99);                             // no longer on the path
    dravelin::setValue(document, {}, "page");                    // no page: the new value reads as 0
    //! [proxy]
    delete document;
}

void observeWithoutTarget()
{
    //! [observation]
    Page page;
    {
        const dravelin::KeyValueObservation margin(&page, "margin", [](const dravelin::KeyValueChange &change) {
            out << "observed " << change.newValue.toReal() << '\n';
        });
        dravelin::setValue(&page, "12.5", "margin"); // converted to the property's type
    }
    dravelin::setValue(&page, 30, "margin"); // the observation is over
    out << "margin " << dravelin::valueForKey(&page, "margin").toReal() << '\n';
    try {
        dravelin::setValue(&page, 30, "margn");
    } catch (const dravelin::Exception &e) {
        out << e.name() << '\n';
    }
    //! [observation]
}

void notify()
{
    Document object, *document = &object;
    document->setObjectName("sketch");

    //! [observer]
    Window window;
    dravelin::ObserverProxy observer(&window);
    observer.addObserverForKey("documentSaved");                   // calls documentSavedAction(Notification *)
    observer.addObserverForKey("documentClosed", &Window::closed); // a member function
    dravelin::ObserverProxy::sendNotification("documentSaved", document);
    dravelin::ObserverProxy::sendNotification("documentClosed");
    //! [observer]

    //! [center]
    const auto center = dravelin::NotificationCenter::defaultCenter();
    center->addObserver(
        &window,
        [](dravelin::Notification *notification) {
            out << notification->userInfo().value("pages").toInt() << " pages\n";
        },
        "documentPrinted", document); // from this sender only
    center->postNotificationName("documentPrinted", document, {{"pages", 12}});
    center->postNotificationName("documentPrinted", nullptr, {{"pages", 99}}); // nobody listens to this one
    //! [center]
}

int main()
{
    observeProperties();
    observeWithoutTarget();
    notify();
}

#include "observing.moc"
