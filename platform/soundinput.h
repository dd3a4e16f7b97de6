// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/filedescriptor.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <compare>

namespace dravelin::detail {

/// What tells a file in one state from every other file and from the same one written anew.
struct SoundStamp
{
    QString resource; ///< empty for files
    quint64 device = 0;
    quint64 inode = 0;
    qint64 modified = 0; ///< nanoseconds
    qint64 changed = 0;  ///< nanoseconds; falls behind nobody's back, unlike the other
    qint64 size = 0;

    std::strong_ordering operator<=>(const SoundStamp &other) const = default;
};

/// An ordinary file, open for reading, or bytes in memory.
class SoundInput
{
public:
    /// \param path a file or Qt resource; anything else, such as a pipe, is refused without waiting for it
    /// \param cause set when it cannot be opened
    explicit SoundInput(const QString &path, QString &cause);
    explicit SoundInput(const QByteArray &bytes);

    [[nodiscard]] bool isOpen() const noexcept { return m_file.isOpen() || !m_bytes.isNull(); }
    /// The file; -1 for bytes in memory.
    [[nodiscard]] int file() const noexcept { return m_file.get(); }
    [[nodiscard]] const QByteArray &bytes() const noexcept { return m_bytes; }
    [[nodiscard]] const SoundStamp &stamp() const noexcept { return m_stamp; }
    [[nodiscard]] qint64 size() const noexcept { return m_stamp.size; }

    /// Up to `size` bytes from `offset` on, independent of the file's position.
    [[nodiscard]] QByteArray part(qint64 offset, qint64 size) const;

private:
    void openFile(const QString &path, QString &cause);
    void openResource(const QString &path, QString &cause);

    FileDescriptor m_file;
    QByteArray m_bytes;
    SoundStamp m_stamp;
};

/// Whether the file ends before its own container says it does. Known for RIFF, AIFF and Ogg; false for others.
[[nodiscard]] bool isCutOff(const SoundInput &input);

} // namespace dravelin::detail
