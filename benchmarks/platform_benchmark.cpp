// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Calls by name against a virtual call, and an observed property change against a signal, a slot and one read.

#include <dravelin/control/proxies.h>
#include <dravelin/platform/selector.h>

#include <QtCore/QMetaProperty>
#include <QtCore/QVariant>

#include <benchmark/benchmark.h>

using namespace dravelin;

namespace {

class Base : public Object
{
    Q_OBJECT

public:
    qint64 count = 0;
    virtual void virtualStep(QObject *) { count += 2; }
    Q_INVOKABLE void step(QObject *) { ++count; }
};

class Counter : public Base
{
    Q_OBJECT

public:
    void virtualStep(QObject *) override { ++count; }
};

class Zoom : public Object
{
    Q_OBJECT
    Q_PROPERTY(double zoom READ zoom WRITE setZoom NOTIFY zoomChanged)

public:
    [[nodiscard]] double zoom() const { return m_zoom; }
    void setZoom(double zoom)
    {
        m_zoom = zoom;
        Q_EMIT
        zoomChanged();
    }

Q_SIGNALS:
    void zoomChanged();

private:
    double m_zoom = 1;
};

/// What a preference item does up to the store: takes the new value from the proxy.
class Watcher : public Object
{
    Q_OBJECT

public:
    double sum = 0;
    virtual void valueChangedAction(dravelin::KVOProxy *proxy) { sum += proxy->getNewValue().toDouble(); }
};

void callByNameOurs(benchmark::State &state)
{
    Counter counter;
    QObject *target = &counter;
    const Method step = methodForSelector(target, "step:");
    for (auto _ : state)
        step(target, target);
    benchmark::DoNotOptimize(counter.count);
}
BENCHMARK(callByNameOurs)->Name("call_by_name/ours");

void callByNamePerform(benchmark::State &state)
{
    Counter counter;
    QObject *target = &counter;
    const Selector operation("step:");
    for (auto _ : state)
        perform(target, operation, target);
    benchmark::DoNotOptimize(counter.count);
}
BENCHMARK(callByNamePerform)->Name("call_by_name_looked_up_each_time/ours");

/// A caller that knows no more of the target than perform() does.
[[gnu::noipa]] void callVirtually(Base *target) { target->virtualStep(target); }

void callByNameVirtual(benchmark::State &state)
{
    Counter counter;
    Base base;
    Base *target = &counter;
    for (auto _ : state) {
        benchmark::DoNotOptimize(target); // or the compiler calls directly
        callVirtually(target);
    }
    benchmark::DoNotOptimize(counter.count + base.count);
}
BENCHMARK(callByNameVirtual)->Name("call_by_name/virtual");
BENCHMARK(callByNameVirtual)->Name("call_by_name_looked_up_each_time/virtual");

void callByNameQt(benchmark::State &state)
{
    Counter counter;
    for (auto _ : state)
        QMetaObject::invokeMethod(&counter, "step", Qt::DirectConnection, Q_ARG(QObject *, &counter));
    benchmark::DoNotOptimize(counter.count);
}
BENCHMARK(callByNameQt)->Name("call_by_name/invokeMethod");

void observedChangeOurs(benchmark::State &state)
{
    Zoom object;
    Watcher watcher;
    const KVOProxy proxy(&object, QStringLiteral("zoom"), &watcher, &Watcher::valueChangedAction);
    double value = 0;
    for (auto _ : state)
        object.setZoom(value += 1);
    benchmark::DoNotOptimize(watcher.sum);
}
BENCHMARK(observedChangeOurs)->Name("observed_change/ours");

/// \param read how the slot reads the property
template <class Read>
void observedChangePeer(benchmark::State &state, Read read)
{
    Zoom object;
    double sum = 0;
    QObject::connect(&object, &Zoom::zoomChanged, &object, [&] { sum += read(&object); });
    double value = 0;
    for (auto _ : state)
        object.setZoom(value += 1);
    benchmark::DoNotOptimize(sum);
}

void observedChangeByName(benchmark::State &state)
{
    observedChangePeer(state, [](const QObject *object) { return object->property("zoom").toDouble(); });
}
BENCHMARK(observedChangeByName)->Name("observed_change/signal+property");

void observedChangeCached(benchmark::State &state)
{
    const QMetaObject &metaObject = Zoom::staticMetaObject;
    const QMetaProperty property = metaObject.property(metaObject.indexOfProperty("zoom"));
    observedChangePeer(state, [property](const QObject *object) { return property.read(object).toDouble(); });
}
BENCHMARK(observedChangeCached)->Name("observed_change/signal+QMetaProperty");

} // namespace

#include "platform_benchmark.moc"
