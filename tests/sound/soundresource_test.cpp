// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bundle.h>
#include <dravelin/platform/sounddata.h>

#include "soundfiles.h"

#include <support/printers.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QResource>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

/// Has the XDG data folders to itself.
class SoundResourceTest : public testing::Test
{
protected:
    SoundResourceTest()
    {
        qputenv("XDG_DATA_HOME", QFile::encodeName(folder.filePath(u"home"_s)));
        qputenv("XDG_DATA_DIRS", QFile::encodeName(folder.filePath(u"system"_s)));
    }
    ~SoundResourceTest() override
    {
        qunsetenv("XDG_DATA_HOME");
        qunsetenv("XDG_DATA_DIRS");
        Bundle::mainBundle().setObject({}, u"SoundTheme"_s);
    }

    /// Writes files with something in them, with their folders.
    void write(const QStringList &names, const QByteArray &bytes = "x") const
    {
        for (const QString &name : names) {
            const QString path = folder.filePath(name);
            QDir().mkpath(QFileInfo(path).path());
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) > 0);
        }
    }

    /// The place below the temporary folder.
    QString find(const QString &name) const
    {
        const QString path = Bundle::mainBundle().pathForSoundResource(name);
        return path.startsWith(folder.path()) ? path.mid(folder.path().size() + 1) : path;
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(SoundResourceTest, FindsTheApplicationsOwn)
{
    write({u"home/Dravelin/tests/sounds/bell.wav"_s, u"home/Dravelin/tests/sounds/bell.mp3"_s,
           u"home/Dravelin/tests/bell.wav"_s, u"home/Dravelin/tests/plain.flac"_s,
           u"home/Dravelin/tests/sounds/a.b.ogg"_s, u"home/Dravelin/tests/sounds/pads/kick.opus"_s,
           u"system/Dravelin/tests/sounds/bell.wav"_s, u"system/sounds/bell.oga"_s, u"home/secret.wav"_s});
    const QString absolute = folder.filePath(u"home/Dravelin/tests/plain"_s);
    const struct
    {
        QString name;
        QString found;
    } rows[] = {
        {u"bell"_s, u"home/Dravelin/tests/sounds/bell.wav"_s},
        {u"bell.mp3"_s, u"home/Dravelin/tests/sounds/bell.mp3"_s},
        {u"bell.oga"_s, u"system/sounds/bell.oga"_s},
        {u"plain"_s, u"home/Dravelin/tests/plain.flac"_s},
        {u"a.b"_s, u"home/Dravelin/tests/sounds/a.b.ogg"_s},
        {u"pads/kick"_s, u"home/Dravelin/tests/sounds/pads/kick.opus"_s},
        {absolute, u"home/Dravelin/tests/plain.flac"_s},
        {absolute + u".flac"_s, u"home/Dravelin/tests/plain.flac"_s},
        {u"sound_test"_s, {}}, // the program itself
        {u"../../secret"_s, {}},
        {u"pads"_s, {}},
        {u"absent.wav"_s, {}},
        {{}, {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(find(row.name), row.found) << row.name.toStdString();

    const QDir beside(QCoreApplication::applicationDirPath());
    beside.mkdir(u"sounds"_s);
    QFile::copy(folder.filePath(u"home/secret.wav"_s), beside.filePath(u"sounds/bell.aiff"_s));
    EXPECT_EQ(find(u"bell"_s), beside.filePath(u"sounds/bell.aiff"_s));
    QDir(beside.filePath(u"sounds"_s)).removeRecursively();
}

TEST_F(SoundResourceTest, FollowsTheThemesRules)
{
    const QByteArray stereo =
        "Directories=stereo,surround\n[stereo]\nOutputProfile=stereo\n[surround]\nOutputProfile=5.1\n";
    write({u"system/sounds/ocean/index.theme"_s}, "[Sound Theme]\nName=Ocean\nInherits=lake,pond\n" + stereo);
    write({u"system/sounds/lake/index.theme"_s}, "[Sound Theme]\nInherits=ocean\n" + stereo);
    write({u"system/sounds/freedesktop/index.theme"_s}, "[Sound Theme]\n" + stereo);
    write({u"system/sounds/ocean/stereo/wave.oga"_s, u"system/sounds/ocean/surround/whale.oga"_s,
           u"home/sounds/ocean/stereo/wave-big.wav"_s, u"system/sounds/lake/stereo/wave-big.ogg"_s,
           u"system/sounds/lake/stereo/duck.oga"_s, u"system/sounds/freedesktop/stereo/bell.oga"_s,
           u"system/sounds/freedesktop/stereo/wave-big-storm.oga"_s, u"home/sounds/ocean/stereo/quiet.disabled"_s,
           u"system/sounds/ocean/stereo/quiet.oga"_s, u"system/sounds/loose.oga"_s,
           u"system/sounds/freedesktop/stereo/C/loose.oga"_s});
    const struct
    {
        QString name;
        QString ocean;
        QString none;
    } rows[] = {
        {u"wave"_s, u"system/sounds/ocean/stereo/wave.oga"_s, {}},
        {u"wave-big"_s, u"home/sounds/ocean/stereo/wave-big.wav"_s, {}},
        {u"wave-small-one"_s, u"system/sounds/ocean/stereo/wave.oga"_s, {}},
        {u"wave-big-storm"_s, u"system/sounds/freedesktop/stereo/wave-big-storm.oga"_s,
         u"system/sounds/freedesktop/stereo/wave-big-storm.oga"_s},
        {u"duck"_s, u"system/sounds/lake/stereo/duck.oga"_s, {}},
        {u"bell"_s, u"system/sounds/freedesktop/stereo/bell.oga"_s, u"system/sounds/freedesktop/stereo/bell.oga"_s},
        {u"bell.wav"_s, {}, {}},
        {u"whale"_s, {}, {}},
        {u"quiet"_s, {}, {}},
        {u"loose"_s, u"system/sounds/freedesktop/stereo/C/loose.oga"_s,
         u"system/sounds/freedesktop/stereo/C/loose.oga"_s},
    };
    for (const auto &row : rows) {
        Bundle::mainBundle().setObject(u"ocean"_s, u"SoundTheme"_s);
        EXPECT_EQ(find(row.name), row.ocean) << row.name.toStdString();
        Bundle::mainBundle().setObject({}, u"SoundTheme"_s);
        EXPECT_EQ(find(row.name), row.none) << row.name.toStdString();
    }
}

TEST_F(SoundResourceTest, LoadsWhatItFindsInQtResources)
{
    const QString path = Bundle::mainBundle().pathForSoundResource(u"tone"_s);
    EXPECT_EQ(path, u":/sounds/tone.wav"_s);
    EXPECT_NE(QResource(path).compressionAlgorithm(), QResource::NoCompression);
    const auto data = SoundData::load(path);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->duration(), 100.0 / 8000);
    EXPECT_EQ(SoundData::load(path), data);
    EXPECT_EQ(Bundle::mainBundle().pathForSoundResource(u":/sounds/tone"_s), path);
}
