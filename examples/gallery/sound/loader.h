// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/sounddata.h>

#include <QtCore/QFuture>

/// What became of one file of a folder.
struct LoadedSound
{
    QString name;
    /// Empty when the file is no sound.
    std::shared_ptr<const dravelin::SoundData> data;
    /// The picture of its waveform.
    QList<float> peaks;
};

/// The folder of the system's sounds; empty when none is installed.
[[nodiscard]] QString systemSoundFolder();

/// Loads all files of a folder in the background, by name. The future tells the progress, and cancelling it ends the
/// work after the file at hand. It ends early when more than a gigabyte has been loaded.
[[nodiscard]] QFuture<LoadedSound> loadSounds(const QString &folder);

/// The sound of a recording or of a computation, as if it had been loaded.
[[nodiscard]] LoadedSound loadedSound(const QString &name, std::shared_ptr<const dravelin::SoundData> data);
