// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "record.h"

#include <dravelin/platform/userdefaults.h>
#include <dravelin/preferences.h>

#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

#include <memory>

using namespace dravelin;
using namespace Qt::StringLiterals;

TEST(PreferencesInQml, AreBoundLikeAnyProperties)
{
    const ScopedUserDefaults isolated;
    const auto record = std::make_shared<Record>();
    const PreferenceManager manager(record);

    QQmlEngine engine;
    engine.rootContext()->setContextProperty(u"settings"_s, record.get());
    QQmlComponent component(&engine);
    component.setData(R"(
        import QtQml
        QtObject {
            property real doubled: 2 * settings.real
            property real red: settings.color.red
            function write() { settings.real = 4; settings.text = "from QML" }
        })",
                      {});
    const std::unique_ptr<QObject> object(component.create());
    ASSERT_TRUE(object) << component.errorString().toStdString();
    EXPECT_EQ(object->property("doubled"), QVariant(0.2));
    record->setProperty("real", 1.5);
    record->setProperty("color", QVariant::fromValue(Color::srgb(0.25, 0, 0)));
    EXPECT_EQ(object->property("doubled"), QVariant(3.0));
    EXPECT_EQ(object->property("red"), QVariant(0.25));

    QMetaObject::invokeMethod(object.get(), "write");
    const UserDefaults onDisk(UserDefaults::standardUserDefaults()->filePath());
    EXPECT_EQ(onDisk.objectForKey(u"real"_s), QVariant(u"4.000000000000000"_s));
    EXPECT_EQ(onDisk.objectForKey(u"text"_s), QVariant(u"from QML"_s));
    EXPECT_EQ(object->property("doubled"), QVariant(8.0));
}
