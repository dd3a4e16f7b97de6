// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/loader.h"

#include <QtCore/QDir>
#include <QtCore/QPromise>
#include <QtCore/QStandardPaths>
#include <QtCore/QThreadPool>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using dravelin::SoundData;

namespace {

constexpr int barsOfPicture = 72;
constexpr std::size_t mostBytes = std::size_t(1) << 30;

/// What stays on the disk would take its time to be read as a whole: a short piece of each part tells enough.
QList<float> roughPeaks(const SoundData &data)
{
    const std::unique_ptr<dravelin::SoundReader> reader = data.reader();
    std::vector<qint16> samples(std::size_t(data.sampleRate() / 4 * data.channels()));
    QList<float> peaks;
    for (int i = 0; i < barsOfPicture; ++i) {
        const qint64 frames = std::max<qint64>(reader->read(data.frames() * i / barsOfPicture, samples), 0);
        const auto end = samples.begin() + frames * data.channels();
        const auto isSofter = [](int a, int b) { return std::abs(a) < std::abs(b); };
        const auto loudest = std::max_element(samples.begin(), end, isSofter);
        peaks << (loudest == end ? 0 : float(std::abs(int(*loudest))) / 32768);
    }
    return peaks;
}

void loadFiles(QPromise<LoadedSound> &promise, const QFileInfoList &files)
{
    std::size_t bytes = 0;
    for (int i = 0; i < files.size() && bytes < mostBytes && !promise.isCanceled(); ++i) {
        auto data = SoundData::load(files[i].filePath());
        bytes += data ? data->samples().size_bytes() : 0;
        promise.addResult(loadedSound(files[i].completeBaseName(), std::move(data)));
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
    QList<float> peaks;
    if (data)
        peaks = data->samples().empty() ? roughPeaks(*data) : data->peaks(barsOfPicture);
    return {name, std::move(data), peaks};
}
