// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArray>

#include <optional>

namespace dravelin::detail {

/// What tells a file, directory or link from every other one, past and present.
struct FileIdentity
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 birthSeconds = 0; ///< a number reused for a new file does not bring the old birth time back
    quint32 birthNanoseconds = 0;
    quint16 type = 0; ///< the file-type bits of the mode
    QByteArray
        handle; ///< where the file system gives one: it counts the inode's uses, also those in one tick of the clock
    quint64 size = UnknownSize; ///< bytes; changes with the contents, so it is not compared

    static constexpr quint64 UnknownSize = ~quint64(0);

    [[nodiscard]] bool hasBirthTime() const noexcept { return birthSeconds != 0 || birthNanoseconds != 0; }

    /// Device numbers change when the system starts or a disk is plugged in again, so they count only where the file
    /// system keeps no birth times.
    [[nodiscard]] bool isSameItem(const FileIdentity &other) const noexcept;
};

/// Of the item at the path itself, without following a link at its end; nothing when it cannot be reached, with the
/// cause in errno.
[[nodiscard]] std::optional<FileIdentity> identityOf(const QByteArray &path);

} // namespace dravelin::detail
