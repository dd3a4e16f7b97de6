// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// A setting changed through its item and on disk when the setter returns, against QSettings; export and import of many items.

#include <dravelin/platform/userdefaults.h>
#include <dravelin/preferences.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;
using namespace dravelin;

namespace {

class Zoom : public PreferenceData
{
    Q_OBJECT
    Q_PROPERTY(double zoom MEMBER zoom NOTIFY zoomChanged)

public:
    void installPreferenceItems() override { addDoubleWithName(u"zoom"_s); }
    double zoom = 0;

Q_SIGNALS:
    void zoomChanged();
};

/// On a real disk, beside the program: a temporary directory may be in memory, where flushing costs nothing.
QString directoryTemplate() { return QCoreApplication::applicationDirPath() + u"/preferences-XXXXXX"_s; }

QString key(qint64 number) { return u"setting%1"_s.arg(number); }

void changeThroughItem(benchmark::State &state)
{
    const QTemporaryDir directory(directoryTemplate());
    const auto store = std::make_shared<UserDefaults>(directory.filePath(u"ours.plist"_s));
    const auto previous = UserDefaults::setStandardUserDefaults(store);
    for (qint64 i = 1; i < state.range(0); ++i)
        store->setObject(u"20 30 400 300"_s, key(i));
    const auto record = std::make_shared<Zoom>();
    const PreferenceManager manager(record);
    double zoom = 0;
    for (auto _ : state)
        record->setProperty("zoom", zoom += 1);
    if (UserDefaults(store->filePath()).objectForKey(u"zoom"_s).toDouble() != zoom)
        state.SkipWithError("not on disk");
    UserDefaults::setStandardUserDefaults(previous);
}
BENCHMARK(changeThroughItem)->Name("durable_change/ours")->Arg(10)->Arg(100)->Arg(1000)->UseRealTime();

void changeQSettings(benchmark::State &state)
{
    const QTemporaryDir directory(directoryTemplate());
    QSettings settings(directory.filePath(u"peer.ini"_s), QSettings::IniFormat);
    for (qint64 i = 1; i < state.range(0); ++i)
        settings.setValue(key(i), u"20 30 400 300"_s);
    double zoom = 0;
    for (auto _ : state) {
        settings.setValue(u"zoom"_s, zoom += 1);
        settings.sync();
    }
}
BENCHMARK(changeQSettings)->Name("durable_change/QSettings")->Arg(10)->Arg(100)->Arg(1000)->UseRealTime();

/// Many items, each bound to an object of its own.
class Many : public PreferenceData
{
    Q_OBJECT

public:
    explicit Many(qint64 count)
    {
        for (qint64 i = 0; i < count; ++i) {
            objects.push_back(std::make_unique<QObject>());
            objects.back()->setProperty(key(i).toLatin1().constData(), i);
        }
    }
    void installPreferenceItems() override
    {
        for (size_t i = 0; i < objects.size(); ++i)
            manager()->addPreference(std::make_shared<PreferenceIntegerItem>(objects[i].get(), key(qint64(i))));
    }
    std::vector<std::unique_ptr<QObject>> objects;
};

void exportItems(benchmark::State &state)
{
    const ScopedUserDefaults isolated;
    const PreferenceManager manager(std::make_shared<Many>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(manager.exportPreferences());
    state.SetComplexityN(state.range(0));
}
BENCHMARK(exportItems)->Name("export/ours")->RangeMultiplier(10)->Range(100, 10'000)->Complexity(benchmark::oN);

void importItems(benchmark::State &state)
{
    const ScopedUserDefaults isolated;
    PreferenceManager manager(std::make_shared<Many>(state.range(0)));
    const QString file = manager.exportPreferences();
    for (auto _ : state) {
        if (!manager.importPreferences(file))
            state.SkipWithError("refused");
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(importItems)->Name("import/ours")->RangeMultiplier(10)->Range(100, 10'000)->Complexity(benchmark::oN);

} // namespace

#include "preferences_benchmark.moc"
