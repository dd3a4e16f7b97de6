// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bundle.h>

#include <platform/resourcefolders.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

QString identifier()
{
    QStringList parts = QCoreApplication::organizationDomain().split(u'.', Qt::SkipEmptyParts);
    std::reverse(parts.begin(), parts.end());
    return (parts << QCoreApplication::applicationName()).join(u'.');
}

QString executablePath() { return QFile::symLinkTarget(u"/proc/self/exe"_s); }

} // namespace

QStringList detail::resourceFolders()
{
    return QStringList(QFileInfo(executablePath()).path())
           << QStandardPaths::standardLocations(QStandardPaths::AppDataLocation) << u":"_s;
}

Bundle &Bundle::mainBundle()
{
    static Bundle bundle;
    return bundle;
}

QVariantMap Bundle::infoDictionary() const
{
    QVariantMap info{
        {u"CFBundleShortVersionString"_s, QCoreApplication::applicationVersion()},
        {u"CFBundleName"_s, QCoreApplication::applicationName()},
        {u"CFBundleExecutable"_s, QFileInfo(executablePath()).fileName()},
        {u"CFBundleIdentifier"_s, identifier()},
    };
    info.insert(m_set);
    return info;
}

QVariant Bundle::objectForInfoDictionaryKey(const QString &key) const { return infoDictionary().value(key); }

void Bundle::setObject(const QVariant &value, const QString &forInfoDictionaryKey)
{
    if (value.isValid())
        m_set.insert(forInfoDictionaryKey, value);
    else
        m_set.remove(forInfoDictionaryKey);
}

QString Bundle::pathForResource(const QString &name, const QString &ofType) const
{
    const QString file = ofType.isEmpty() ? name : name + u'.' + ofType;
    for (const QString &folder : detail::resourceFolders()) {
        QString path = folder + u'/' + file;
        if (QFileInfo(path).isFile())
            return path;
    }
    return {};
}

} // namespace dravelin
