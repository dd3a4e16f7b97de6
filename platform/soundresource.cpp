// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bundle.h>

#include <platform/resourcefolders.h>
#include <platform/soundtheme.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

const QStringList Extensions{u".wav"_s, u".oga"_s,  u".ogg"_s, u".opus"_s, u".flac"_s, u".mp3"_s, u".aiff"_s,
                             u".aif"_s, u".aifc"_s, u".au"_s,  u".snd"_s,  u".caf"_s,  u".w64"_s};
const QStringList ThemeExtensions{u".oga"_s, u".ogg"_s, u".wav"_s};

/// The known extension at the end of the name; empty when there is none.
QString extensionOf(const QString &name)
{
    const auto found = std::ranges::find_if(Extensions, [&](const QString &extension) {
        return name.size() > extension.size() && name.endsWith(extension, Qt::CaseInsensitive);
    });
    return found == Extensions.end() ? QString() : name.last(found->size());
}

/// A name without any extension is not taken as it is: beside the executable, that might be a program.
QString findFile(const QString &path)
{
    if (path.section(u'/', -1).contains(u'.') && QFileInfo(path).isFile())
        return path;
    for (const QString &extension : Extensions) {
        if (QFileInfo(path + extension).isFile())
            return path + extension;
    }
    return {};
}

QString findAbsolute(const QString &path) { return QFileInfo(path).isFile() ? path : findFile(path); }

QString findInFolders(const QString &name)
{
    for (const QString &folder : detail::resourceFolders()) {
        for (const QString &stem : {folder + u"/sounds/"_s + name, folder + u'/' + name}) {
            if (QString path = findFile(stem); !path.isNull())
                return path;
        }
    }
    return {};
}

QString findInThemes(const QString &name, const QString &theme)
{
    if (name.contains(u'/'))
        return {};
    const QString extension = extensionOf(name);
    const detail::SoundThemes themes(theme);
    return extension.isEmpty() ? themes.find(name, ThemeExtensions)
                               : themes.find(name.chopped(extension.size()), {extension});
}

} // namespace

QString Bundle::pathForSoundResource(const QString &name) const
{
    if (name.isEmpty() || name.split(u'/').contains(u".."_s))
        return {};
    if (QDir::isAbsolutePath(name))
        return findAbsolute(name);
    const QString path = findInFolders(name);
    return path.isNull() ? findInThemes(name, objectForInfoDictionaryKey(u"SoundTheme"_s).toString()) : path;
}

} // namespace dravelin
