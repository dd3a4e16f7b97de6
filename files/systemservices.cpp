// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/systemservices.h>

#include <dravelin/platform/bundle.h>

using namespace Qt::StringLiterals;

namespace dravelin {

QString SystemServices::versionNumber(bool withBuildNumber)
{
    const Bundle &bundle = Bundle::mainBundle();
    const QString version = bundle.objectForInfoDictionaryKey(u"CFBundleShortVersionString"_s).toString();
    const QString build = bundle.objectForInfoDictionaryKey(u"CFBundleVersion"_s).toString();
    if (!withBuildNumber || build.isNull())
        return version;
    return (version.isNull() ? u"(null)"_s : version) + u" build "_s + build;
}

void SystemServices::callAction(QObject *target, Selector operation) { perform(target, operation); }

void SystemServices::callActionWithId(QObject *target, Selector operation, CallArgument argument)
{
    perform(target, operation, argument);
}

QByteArray SystemServices::encodeObjectData(const QVariant &object)
{
    KeyedArchiver archiver;
    archiver.encodeObject(object, u"objectDataKey"_s);
    return archiver.encodedData();
}

QVariant SystemServices::decodeObjectData(const QByteArray &data)
{
    KeyedUnarchiver unarchiver(data);
    return unarchiver.decodeObjectForKey(u"objectDataKey"_s);
}

} // namespace dravelin
