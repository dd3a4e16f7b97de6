// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/fileidentity.h>

namespace dravelin::detail {

/// Looks for an item that used to be at `oldPath`: in its directory, however large that is, then below that, then below
/// up to three levels above, never into other file systems, until `maximumEntries` further directory entries were seen.
/// \return the path, absent when not found
[[nodiscard]] QByteArray findMoved(const FileIdentity &identity, const QByteArray &oldPath, int maximumEntries);

/// Whether what is there of `path`, be it only a directory above it, is on the device that the item was on.
[[nodiscard]] bool isVolumePresent(const FileIdentity &identity, QByteArray path);

/// Looks for an item of the volume that used to be mounted somewhere above `oldPath`, at the same place of that volume,
/// wherever a local disk is mounted now. \return the path, absent when not found
[[nodiscard]] QByteArray findOnMovedVolume(const FileIdentity &identity, const QByteArray &oldPath);

/// Whether the user has thrown away what is at `path`.
[[nodiscard]] bool isInTrash(const QByteArray &path);

} // namespace dravelin::detail
