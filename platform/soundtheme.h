// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QStringList>

namespace dravelin::detail {

/// The desktop's sound themes as the freedesktop Sound Theme specification orders them.
class SoundThemes
{
public:
    /// \param theme the one that is asked first; "freedesktop" comes last unless one of them inherits it
    explicit SoundThemes(const QString &theme);

    /// \param name without folder and extension
    /// \param extensions in the order of their preference, with point
    /// \return a path, absent when there is none
    [[nodiscard]] QString find(const QString &name, const QStringList &extensions) const;

private:
    void add(const QString &theme);
    void addFolders(const QString &theme, const QStringList &directories);

    QStringList m_roots;   ///< the "sounds" folders
    QStringList m_themes;  ///< in the order of their search
    QStringList m_folders; ///< of files, in the order of their search
};

} // namespace dravelin::detail
