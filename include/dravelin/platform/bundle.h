// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

namespace dravelin {

/// What the application says of itself, and its resources.
///
///     auto &bundle = dravelin::Bundle::mainBundle();
///     bundle.setObject("2041", "CFBundleVersion");
///     QString version = bundle.infoDictionary().value("CFBundleShortVersionString").toString();
///     QString help = bundle.pathForResource("help", "html");
class DRAVELIN_EXPORT Bundle
{
public:
    [[nodiscard]] static Bundle &mainBundle();

    /// The entries below, with those that the application set in front of them:
    ///   - CFBundleShortVersionString: `QCoreApplication::applicationVersion()`
    ///   - CFBundleName, CFBundleExecutable: the application's name and its executable's file name
    ///   - CFBundleIdentifier: the organisation's domain in reverse and the name, "org.example.sketch"
    [[nodiscard]] QVariantMap infoDictionary() const;

    /// One entry of infoDictionary(), invalid when there is none.
    /// \operation{objectForInfoDictionaryKey:}
    [[nodiscard]] QVariant objectForInfoDictionaryKey(const QString &key) const;

    /// Sets an entry of infoDictionary(), such as the build number as CFBundleVersion; an invalid value takes it away
    /// again.
    void setObject(const QVariant &value, const QString &forInfoDictionaryKey);

    /// Finds the file "name.ofType", or "name" for an empty type, beside the executable, in the folders that
    /// `QStandardPaths::AppDataLocation` lists, and in the application's Qt resources (":/"), in this order.
    /// \return its path; absent when there is no such file
    /// \operation{pathForResource:ofType:}
    [[nodiscard]] QString pathForResource(const QString &name, const QString &ofType = {}) const;

private:
    Bundle() = default;
    QVariantMap m_set;
};

} // namespace dravelin
