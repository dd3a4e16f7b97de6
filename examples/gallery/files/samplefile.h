// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QDir>
#include <QtCore/QUrl>

/// A file that may be renamed, replaced and deleted, since nobody needs it.
class SampleFile
{
public:
    explicit SampleFile(const QDir &folder, const QString &name);

    [[nodiscard]] bool make();
    [[nodiscard]] bool exists() const { return m_folder.exists(m_name); }
    /// As a file manager does it.
    [[nodiscard]] bool rename();
    /// As an editor saves: a new file takes the old one's place.
    [[nodiscard]] bool replace();
    [[nodiscard]] bool remove();

    [[nodiscard]] QString path() const { return m_folder.filePath(m_name); }
    [[nodiscard]] QUrl url() const { return QUrl::fromLocalFile(path()); }

private:
    QDir m_folder;
    QString m_name;
    int m_version = 1;
};
