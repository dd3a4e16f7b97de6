// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/soundtheme.h>

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QSettings>
#include <QtCore/QStandardPaths>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

constexpr qsizetype MostThemes = 32;

/// A list of the index file, without what leads out of the themes' folders.
QStringList namesIn(const QSettings &index, const QString &key)
{
    QStringList names;
    for (const QString &entry : index.value(key).toStringList()) {
        const QString name = entry.trimmed();
        if (!name.isEmpty() && !name.contains(u".."_s) && !name.startsWith(u'/'))
            names.append(name);
    }
    return names;
}

bool isStereo(const QSettings &index, const QString &directory)
{
    const QString profile = index.value(directory + u"/OutputProfile"_s).toString();
    return profile.isEmpty() || profile == u"stereo"_s;
}

/// Folders of the locale, the most specific one first.
QStringList localeFolders()
{
    const QString locale = QLocale().name();
    return {u'/' + locale, u'/' + locale.section(u'_', 0, 0), u"/C"_s, QString()};
}

/// \return a path, empty when the sound is switched off; nothing when the folder does not have it
std::optional<QString> findIn(const QString &folder, const QString &name, const QStringList &extensions)
{
    const QString stem = folder + u'/' + name;
    if (QFileInfo::exists(stem + u".disabled"_s))
        return QString();
    for (const QString &extension : extensions) {
        if (QFileInfo(stem + extension).isFile())
            return stem + extension;
    }
    return {};
}

} // namespace

SoundThemes::SoundThemes(const QString &theme)
{
    for (const QString &folder : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation))
        m_roots.append(folder + u"/sounds"_s);
    if (!theme.contains(u'/') && !theme.startsWith(u'.'))
        add(theme);
    add(u"freedesktop"_s);
    m_folders += m_roots;
}

/// Themes that inherit each other in a circle are added once.
void SoundThemes::add(const QString &theme)
{
    if (theme.isEmpty() || m_themes.contains(theme) || m_themes.size() >= MostThemes)
        return;
    m_themes.append(theme);
    for (const QString &root : std::as_const(m_roots)) {
        const QString file = root + u'/' + theme + u"/index.theme"_s;
        if (!QFileInfo(file).isFile())
            continue;
        const QSettings index(file, QSettings::IniFormat);
        QStringList directories = namesIn(index, u"Sound Theme/Directories"_s);
        directories.removeIf([&](const QString &directory) { return !isStereo(index, directory); });
        addFolders(theme, directories);
        for (const QString &parent : namesIn(index, u"Sound Theme/Inherits"_s))
            add(parent);
        return;
    }
}

void SoundThemes::addFolders(const QString &theme, const QStringList &directories)
{
    for (const QString &directory : directories) {
        for (const QString &root : std::as_const(m_roots)) {
            for (const QString &locale : localeFolders()) {
                const QString folder = root + u'/' + theme + u'/' + directory + locale;
                if (!m_folders.contains(folder) && QFileInfo(folder).isDir())
                    m_folders.append(folder);
            }
        }
    }
}

QString SoundThemes::find(const QString &name, const QStringList &extensions) const
{
    for (QString shorter = name; !shorter.isEmpty();
         shorter.truncate(std::max<qsizetype>(shorter.lastIndexOf(u'-'), 0))) {
        for (const QString &folder : m_folders) {
            if (const auto found = findIn(folder, shorter, extensions))
                return found->isEmpty() ? QString() : *found;
        }
    }
    return {};
}

} // namespace dravelin::detail
