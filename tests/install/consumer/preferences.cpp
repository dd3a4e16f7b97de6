// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/control.h>
#include <dravelin/preferences.h>

#include <QtGui/QColor>

using namespace dravelin;

namespace {

class Settings : public PreferenceData
{
    Q_OBJECT
    Q_PROPERTY(bool showGrid MEMBER showGrid NOTIFY showGridChanged)
    Q_PROPERTY(double zoom MEMBER zoom NOTIFY zoomChanged)
    Q_PROPERTY(dravelin::Color paper MEMBER paper NOTIFY paperChanged)
    Q_PROPERTY(QString title MEMBER title NOTIFY titleChanged)
    Q_PROPERTY(qint64 pages MEMBER pages NOTIFY pagesChanged)
    Q_PROPERTY(float margin MEMBER margin NOTIFY marginChanged)
    Q_PROPERTY(double width MEMBER width NOTIFY widthChanged)
    Q_PROPERTY(QByteArray stamp MEMBER stamp NOTIFY stampChanged)

public:
    void installManager(dravelin::PreferenceManager *manager) override
    {
        ++installs;
        PreferenceData::installManager(manager);
    }
    void resetDefaultValues() override
    {
        PreferenceData::resetDefaultValues();
        setProperty("showGrid", true);
        setProperty("zoom", 1.0);
        setProperty("paper", QVariant::fromValue(Color::srgb(1, 0.98, 0.9)));
    }
    void installPreferenceItems() override
    {
        PreferenceData::installPreferenceItems();
        addBooleanWithName("showGrid");
        addPreference(&Settings::zoomChanged);
        addNSColorWithName("paper");
        addNSStringWithName("title");
        addNSIntegerWithName("pages");
        addFloatWithName("margin");
        addDoubleWithName("width");
        addNSDataWithName("stamp");
    }
    bool shouldImportPreference(const PreferenceItem &item) override
    {
        return PreferenceData::shouldImportPreference(item) && item.name() != "title";
    }
    int installs = 0;
    bool showGrid = false;
    double zoom = 0;
    Color paper;
    QString title;
    qint64 pages = 0;
    float margin = 0;
    double width = 0;
    QByteArray stamp;

Q_SIGNALS:
    void showGridChanged();
    void zoomChanged();
    void paperChanged();
    void titleChanged();
    void pagesChanged();
    void marginChanged();
    void widthChanged();
    void stampChanged();
};

void settingsAreKept()
{
    const ScopedUserDefaults isolated;
    QString exported;
    {
        auto settings = std::make_shared<Settings>();
        const PreferenceManager manager(settings);
        settings->setProperty("zoom", 2.5);
        settings->setProperty("title", "Plan");
        settings->setProperty("paper", QVariant::fromValue(Color(QColor(255, 0, 0))));
        exported = manager.exportPreferences();
    }
    auto settings = std::make_shared<Settings>();
    PreferenceManager manager(settings);
    CHECK(settings->installs == 1 && settings->zoom == 2.5 && settings->showGrid && settings->title == "Plan");
    CHECK(settings->paper == Color::srgb(1, 0, 0));
    settings->setProperty("zoom", 4.0);
    settings->setProperty("title", "Other");
    QString message;
    CHECK(manager.importPreferences(exported, &message) && settings->zoom == 2.5 && settings->title == "Other");
    CHECK(UserDefaults(isolated.store()->filePath()).objectForKey("zoom").toString().startsWith("2.5"));
    CHECK(manager.dumpPreferences().contains("zoom"));
    manager.resetPreferencesToDefaults();
    CHECK(settings->zoom == 1);
    QString key, value;
    CHECK(PreferenceManager::parsePreferenceLine(exported.split('\n').constFirst(), &key, &value) == !key.isEmpty());
}

void itemsStandAlone()
{
    const ScopedUserDefaults isolated;
    auto settings = std::make_shared<Settings>();
    PreferenceManager manager(settings, "2");
    const auto item = std::make_shared<PreferenceItem>(settings.get(), "zoom");
    manager.addPreference(item);
    item->save("3");
    CHECK(item->preferenceExists() && item->load() == "3");
    item->setNSNumber(5.0);
    CHECK(item->getNSNumber().toDouble() == 5 && settings->zoom == 5);
    item->valueChangedAction();
    CHECK(item->dumpPreference().contains("zoom") && item->nameWithSuffix() == "zoom");
    item->setManager(&manager);
    CHECK(item->manager() == &manager && settings->manager() == &manager && item->proxy()->object() == settings.get());
    item->setProxy(nullptr);
    CHECK(!item->proxy() && manager.preferenceItems().contains("zoom"));
    CHECK(manager.target() == settings.get() && manager.suffix() == "2");
}

void singleDefaultsAreSet()
{
    const ScopedUserDefaults isolated;
    setBOOLDefault("bool", true);
    setIntegerDefault("integer", 7);
    setFloatDefault("float", 0.5F);
    setStringDefault("string", "text");
    setDataDefault("data", "bytes");
    setUserDefault("any", QVariantList{1, 2});
    CHECK(getBOOLdefault("bool", false) && getIntegerDefault("integer", 0) == 7 && getFloatDefault("float", 0) == 0.5F);
    CHECK(getStringDefault("string", {}) == "text" && getDataDefault("data", {}) == "bytes");
    CHECK(hasUserDefault("any") && getUserDefault("any").toList().size() == 2);
    CHECK(getUserDefaultWithDefault("none", 3) == 3 && savePreferences());
    removeAllPreferences();
    CHECK(!hasUserDefault("any"));

    UserDefaults *store = isolated.store();
    store->registerDefaults({{"registered", 1}});
    store->setObject("set", "key");
    CHECK(store->dictionaryRepresentation().contains("registered") && store->synchronize());
    store->removeObjectForKey("key");
    CHECK(!store->objectForKey("key").isValid());
}

} // namespace

void usePreferences()
{
    settingsAreKept();
    itemsStandAlone();
    singleDefaultsAreSet();
}

#include "preferences.moc"
