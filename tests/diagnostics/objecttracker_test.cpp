// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/objecttracker.h>

#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtCore/QTimer>

#include <memory>
#include <thread>
#include <vector>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class Foo : public QObject
{
    Q_OBJECT
};

class ObjectTrackerTest : public testing::Test
{
protected:
    ObjectTrackerTest()
    {
        _initializeObjectTracker();
        _clearTrackedObjects();
    }
    template <class Class>
    std::unique_ptr<Class> tracked()
    {
        auto object = std::make_unique<Class>();
        _trackObject(object.get());
        return object;
    }
};

} // namespace

TEST(ObjectTracker, IsOffUntilInitialised)
{
    // In a process of its own: the tracker cannot be switched off again.
    const auto uninitialised = [] {
        QObject object;
        _trackObject(&object);
        _takeSnapCount();
        _clearTrackedObjects();
        const bool off = _dumpTrackedObjects() == u"No class list."_s;
        _initializeObjectTracker();
        std::exit(off && _dumpTrackedObjects() == u""_s ? 0 : 1);
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(uninitialised(), testing::ExitedWithCode(0), "");
}

TEST_F(ObjectTrackerTest, ReportsEachClassAgainstTheSnapshot)
{
    auto a = tracked<Foo>(), b = tracked<Foo>();
    EXPECT_EQ(_dumpTrackedObjects(), u"Foo - Snap:0 Count:2 Delta:2\r"_s);
    auto c = tracked<Foo>();
    const auto timer = tracked<QTimer>();
    _trackObject(c.get()); // counts once
    _trackObject(nullptr);
    _takeSnapCount();
    a.reset();
    std::thread([&] { b.reset(); }).join();
    EXPECT_EQ(_dumpTrackedObjects(), u"Foo - Snap:3 Count:1 Delta:-2\rQTimer - Snap:1 Count:1 Delta:0\r"_s);

    c.reset();
    _initializeObjectTracker(); // leaves everything alone
    EXPECT_EQ(_dumpTrackedObjects(), u"QTimer - Snap:1 Count:1 Delta:0\r"_s);
    c = tracked<Foo>(); // the class comes back without its snapshot
    EXPECT_EQ(_dumpTrackedObjects(), u"Foo - Snap:0 Count:1 Delta:1\rQTimer - Snap:1 Count:1 Delta:0\r"_s);
    _clearTrackedObjects();
    EXPECT_EQ(_dumpTrackedObjects(), u""_s);
}

TEST_F(ObjectTrackerTest, ContainerCountsTheGoneUntilTrimmed)
{
    DebugObjectContainer container;
    EXPECT_EQ(container.report(), u"(null) - Snap:0 Count:0 Delta:0"_s);
    auto a = std::make_unique<Foo>();
    container.addObject(a.get());
    EXPECT_TRUE(container.objectLookup().contains(qint32(quintptr(a.get()))));
    container.takeSnapShotCount();
    EXPECT_EQ(container.report(), u"Foo - Snap:1 Count:1 Delta:0"_s);
    a.reset();
    EXPECT_EQ(container.report(), u"(null) - Snap:1 Count:1 Delta:0"_s);
    container.trimObjects();
    EXPECT_EQ(container.report(), u"(null) - Snap:1 Count:0 Delta:-1"_s);
    container.addObject(std::make_unique<Foo>().get());
    container.takeSnapShotCount();
    EXPECT_EQ(container.report(), u"(null) - Snap:0 Count:0 Delta:0"_s);
}

TEST_F(ObjectTrackerTest, TrimsExactlyTheGoneAmongMany)
{
    std::vector<std::unique_ptr<Foo>> objects;
    for (int i = 0; i < 10'000; ++i)
        objects.push_back(tracked<Foo>());
    _takeSnapCount();
    for (size_t i = 0; i < objects.size(); i += 3)
        objects[i].reset();
    EXPECT_EQ(_dumpTrackedObjects(), u"Foo - Snap:10000 Count:6666 Delta:-3334\r"_s);
    for (const auto &object : objects)
        _trackObject(object.get()); // none is lost, none counts twice
    EXPECT_EQ(_dumpTrackedObjects(), u"Foo - Snap:10000 Count:6666 Delta:-3334\r"_s);
}

#include "objecttracker_test.moc"
