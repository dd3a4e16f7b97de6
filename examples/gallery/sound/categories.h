// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QColor>

/// A group of sounds that is switched on and off together. Its bit in a mask is its place in soundCategories().
struct SoundCategory
{
    const char *name;
    /// What file names of the group contain between hyphens, separated by spaces.
    const char *words;
};

[[nodiscard]] const QList<SoundCategory> &soundCategories();

/// \param name a file's name without folder and extension, such as "phone-incoming-call"
/// \return the bits of all categories that the name belongs to, of the last one when it belongs to no other
[[nodiscard]] quint64 categoriesOfSound(const QString &name);

/// The colour of the first category in the mask.
[[nodiscard]] QColor colorOfSound(quint64 categories);
