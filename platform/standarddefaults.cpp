// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/userdefaults.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>

#include <utility>

namespace dravelin {

namespace {

using namespace Qt::StringLiterals;

std::shared_ptr<UserDefaults> &replacement()
{
    static std::shared_ptr<UserDefaults> store;
    return store;
}

QString configurationPath(const QString &name)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u'/' + name + u".plist"_s;
}

QString fileName(QString name) { return name.replace(u'/', u'_'); }

/// Without an application object the program's file gives the name.
QString applicationName()
{
    const QString name = QCoreApplication::applicationName();
    return name.isEmpty() ? QFileInfo(QFile::symLinkTarget(u"/proc/self/exe"_s)).baseName() : name;
}

QString standardPath()
{
    const QString organisation = fileName(QCoreApplication::organizationName());
    const QString application = fileName(applicationName());
    return configurationPath(organisation.isEmpty() ? application : organisation + u'/' + application);
}

UserDefaults *applicationStore()
{
    static UserDefaults store(standardPath(), configurationPath(u"GlobalPreferences"_s),
                              QCoreApplication::instance() ? QCoreApplication::arguments() : QStringList());
    return &store;
}

} // namespace

UserDefaults *UserDefaults::standardUserDefaults()
{
    const auto &store = replacement();
    return store ? store.get() : applicationStore();
}

std::shared_ptr<UserDefaults> UserDefaults::setStandardUserDefaults(std::shared_ptr<UserDefaults> store)
{
    return std::exchange(replacement(), std::move(store));
}

class ScopedUserDefaults::Private
{
public:
    QTemporaryDir directory;
    std::shared_ptr<UserDefaults> store = std::make_shared<UserDefaults>(directory.filePath(u"defaults.plist"_s));
    std::shared_ptr<UserDefaults> previous = UserDefaults::setStandardUserDefaults(store);
};

ScopedUserDefaults::ScopedUserDefaults() : d(std::make_unique<Private>()) {}

ScopedUserDefaults::~ScopedUserDefaults() { UserDefaults::setStandardUserDefaults(d->previous); }

UserDefaults *ScopedUserDefaults::store() const { return d->store.get(); }

} // namespace dravelin
