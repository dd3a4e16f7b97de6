// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/loader.h"

#include <QtCore/QDir>
#include <QtCore/QPromise>
#include <QtCore/QStandardPaths>
#include <QtCore/QThreadPool>

#include <utility>

using namespace Qt::StringLiterals;
using dravelin::SoundData;

namespace {

constexpr int barsOfPicture = 72;

void loadFiles(QPromise<LoadedSound> &promise, const QFileInfoList &files)
{
    for (int i = 0; i < files.size() && !promise.isCanceled(); ++i) {
        promise.addResult(loadedSound(files[i].completeBaseName(), SoundData::load(files[i].filePath())));
        promise.setProgressValue(i + 1);
    }
    promise.finish();
}

} // namespace

QString systemSoundFolder()
{
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, u"sounds/freedesktop/stereo"_s,
                                  QStandardPaths::LocateDirectory);
}

QFuture<LoadedSound> loadSounds(const QString &folder)
{
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files, QDir::Name | QDir::IgnoreCase);
    const auto promise = std::make_shared<QPromise<LoadedSound>>();
    promise->start();
    promise->setProgressRange(0, int(files.size()));
    QThreadPool::globalInstance()->start([promise, files] { loadFiles(*promise, files); });
    return promise->future();
}

LoadedSound loadedSound(const QString &name, std::shared_ptr<const SoundData> data)
{
    const QList<float> peaks = data ? data->peaks(barsOfPicture) : QList<float>();
    return {name, std::move(data), peaks};
}
