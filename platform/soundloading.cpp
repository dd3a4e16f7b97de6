// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/soundloading.h>

#include <dravelin/platform/log.h>

#include <platform/memorysound.h>
#include <platform/soundfile.h>
#include <platform/streamedsound.h>

#include <algorithm>
#include <atomic>
#include <utility>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

std::atomic<qint64> memoryLimit = qint64(64) << 20;

/// A header's promise is believed in advance as far as the file can be expected to keep it.
constexpr qint64 FramesPerByte = 32;
constexpr qint64 FramesAtLeast = 4096;

bool fitsInMemory(const SoundFile &file, qint64 frames)
{
    return frames <= memoryLimit / qint64(sizeof(qint16)) / file.channels();
}

SampleBuffer decode(SoundFile &file)
{
    const auto channels = size_t(file.channels());
    qint64 room = std::min(file.frames(), std::max(file.input().size() * FramesPerByte, FramesAtLeast));
    SampleBuffer buffer;
    qint64 frames = 0;
    for (bool isMore = true; isMore;) {
        buffer.resize(size_t(room) * channels);
        frames += file.read(buffer.all().subspan(size_t(frames) * channels));
        isMore = frames == room && frames < file.frames() && fitsInMemory(file, room);
        room = isMore ? std::min(2 * room, file.frames()) : room;
    }
    if (frames < room)
        buffer.resize(size_t(frames) * channels);
    return buffer;
}

void reportCut(const QString &path, const SoundFile &file, qint64 frames)
{
    if (frames < file.frames() || isCutOff(file.input())) {
        const QString error = file.error();
        const QString cause = error.isNull() ? QString() : u": "_s + error;
        reportSound(path, u"it is cut off, only the %1 frames that are there are used%2"_s.arg(frames).arg(cause));
    }
}

std::shared_ptr<const SoundData> loadIntoMemory(const QString &path, SoundFile &file)
{
    SampleBuffer buffer = decode(file);
    const std::span<const qint16> samples = buffer.all();
    if (samples.empty() && file.frames() > 0) {
        reportSound(path, file.error().isNull() ? u"nothing in it can be decoded"_s : file.error());
        return nullptr;
    }
    reportCut(path, file, qint64(samples.size()) / file.channels());
    return std::make_shared<MemorySound<SampleBuffer>>(path, std::move(buffer), samples, file.channels(),
                                                       file.sampleRate());
}

bool reaches(SoundFile &file, qint64 frame)
{
    std::vector<qint16> samples(size_t(file.channels()));
    return file.seek(frame) && file.read(samples) == 1;
}

qint64 scan(SoundFile &file)
{
    std::vector<qint16> block(size_t(1) << 16);
    qint64 frames = 0;
    for (qint64 read = 1; read > 0; frames += read)
        read = file.read(block);
    return frames;
}

std::unique_ptr<SoundFile> reopened(const SoundFile &file, const QString &path, QString &cause)
{
    SoundInput input = file.input().file() < 0 ? SoundInput(file.input().bytes()) : SoundInput(path, cause);
    return input.isOpen() ? SoundFile::open(std::move(input), cause) : nullptr;
}

/// Whether readers will find it again.
bool canBeOpenedAnew(const SoundInput &input) { return input.file() >= 0 || !input.stamp().resource.isEmpty(); }

/// Frames of a file that promises more than fit in memory, whether or not it keeps that.
qint64 measure(SoundFile &file, const QString &path)
{
    if (reaches(file, file.frames() - 1))
        return file.frames();
    QString cause;
    const auto anew = reopened(file, path, cause); // seeking may have failed for good
    return anew ? scan(*anew) : 0;
}

std::shared_ptr<const SoundData> loadLong(const QString &path, SoundFile &file)
{
    const qint64 frames = measure(file, path);
    if (!fitsInMemory(file, frames) && canBeOpenedAnew(file.input())) {
        reportCut(path, file, frames);
        return std::make_shared<StreamedSound>(path, frames, file.channels(), file.sampleRate());
    }
    QString cause = u"it is too long"_s;
    const auto anew = fitsInMemory(file, frames) ? reopened(file, path, cause) : nullptr;
    if (anew)
        return loadIntoMemory(path, *anew);
    reportSound(path, cause);
    return nullptr;
}

} // namespace

std::shared_ptr<const SoundData> loadSound(const QString &path, SoundInput input)
{
    QString cause;
    const auto file = SoundFile::open(std::move(input), cause);
    if (!file) {
        reportSound(path, cause);
        return nullptr;
    }
    return fitsInMemory(*file, file->frames()) ? loadIntoMemory(path, *file) : loadLong(path, *file);
}

std::shared_ptr<const SoundData> loadSound(const QString &name, const QByteArray &bytes)
{
    return loadSound(name, SoundInput(bytes));
}

qint64 setSoundMemoryLimit(qint64 bytes) { return memoryLimit.exchange(bytes); }

void reportSound(const QString &path, const QString &cause)
{
    logWarning(u"Sound: %1: %2"_s.arg(path.isEmpty() ? u"no file"_s : path, cause));
}

} // namespace dravelin::detail
