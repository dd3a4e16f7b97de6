// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QString>
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
    /// That of the application; there is no other.
    [[nodiscard]] static Bundle &mainBundle();

    /// The entries below, with those that the application set in front of them:
    ///   - CFBundleShortVersionString: `QCoreApplication::applicationVersion()`
    ///   - CFBundleName, CFBundleExecutable: the application's name and its executable's file name
    ///   - CFBundleIdentifier: the organisation's domain in reverse and the name, "org.example.sketch"
    [[nodiscard]] QVariantMap infoDictionary() const;

    /// One entry of infoDictionary(), invalid when there is none.
    /// \operation{objectForInfoDictionaryKey:}
    [[nodiscard]] QVariant objectForInfoDictionaryKey(const QString &key) const;

    /// Sets an entry of infoDictionary(), such as the build number as CFBundleVersion or the sound theme in use as
    /// SoundTheme; an invalid value takes it away again.
    void setObject(const QVariant &value, const QString &forInfoDictionaryKey);

    /// Finds the file "name.ofType", or "name" for an empty type, beside the executable, in the folders that
    /// `QStandardPaths::AppDataLocation` lists, and in the application's Qt resources (":/"), in this order.
    /// \return its path; absent when there is no such file
    /// \operation{pathForResource:ofType:}
    [[nodiscard]] QString pathForResource(const QString &name, const QString &ofType = {}) const;

    /// Finds a sound by its name, with or without extension; without one, .wav, .oga, .ogg, .opus, .flac, .mp3, .aiff,
    /// .aif, .aifc, .au, .snd, .caf and .w64 are tried in this order. Searched are
    ///   1. the folders of pathForResource() in their order: beside the executable, the `AppDataLocation` folders, Qt
    ///      resources (":/"), in each its folder "sounds" first;
    ///   2. the sound theme that the entry SoundTheme of infoDictionary() names, the themes that it inherits, and the
    ///      theme "freedesktop", below "sounds" in the folders that `QStandardPaths::GenericDataLocation` lists, in
    ///      stereo; there ".disabled" files and folders of the locale count;
    ///   3. these "sounds" folders themselves.
    ///
    /// A name that the last two do not have is looked for without what follows its last "-", and again so:
    /// "message-new-email" falls back to "message-new" and "message". The rules of the themes are those of the freedesktop
    /// Sound Theme specification.
    /// \param name may have folders in front ("pads/kick"); an absolute path or one in Qt resources (":/kick") is not
    /// searched for, though its extension may be missing as well
    /// \return its path; absent when there is no such file, for an empty name and for one with ".." in it
    /// \cost looks at up to a few hundred file names
    /// \operation{pathForSoundResource:}
    [[nodiscard]] QString pathForSoundResource(const QString &name) const;

private:
    Bundle() = default;
    QVariantMap m_set;
};

} // namespace dravelin
