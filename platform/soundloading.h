// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/sounddata.h>

#include <platform/soundinput.h>

namespace dravelin::detail {

/// Decodes a sound into memory, or measures one that is too long for that. Whatever is wrong with it gets into the log.
/// \return empty when nothing can be decoded
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<const SoundData> loadSound(const QString &path, SoundInput input);

/// The same for bytes in memory; `name` is for the log. Sounds that are too long are refused.
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<const SoundData> loadSound(const QString &name, const QByteArray &bytes);

/// How many bytes of samples a sound may have in memory, for tests: 64 MiB at first.
/// \return what it was
DRAVELIN_EXPORT qint64 setSoundMemoryLimit(qint64 bytes);

/// One line in the log.
void reportSound(const QString &path, const QString &cause);

} // namespace dravelin::detail
