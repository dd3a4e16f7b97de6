// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/categories.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <bit>

const QList<SoundCategory> &soundCategories()
{
    static const QList<SoundCategory> categories{
        {"Dialogs and errors", "dialog window error warning question information"},
        {"Phone and messages", "phone message"},
        {"Audio channels", "audio"},
        {"Devices and power", "device power battery network suspend"},
        {"Everything else", ""},
    };
    return categories;
}

quint64 categoriesOfSound(const QString &name)
{
    const QList<SoundCategory> &categories = soundCategories();
    const QStringList parts = name.split(u'-');
    quint64 mask = 0;
    for (qsizetype i = 0; i < categories.size(); ++i) {
        const QStringList words = QString::fromLatin1(categories[i].words).split(u' ', Qt::SkipEmptyParts);
        if (std::any_of(parts.begin(), parts.end(), [&](const QString &part) { return words.contains(part); }))
            mask |= quint64(1) << i;
    }
    return mask ? mask : quint64(1) << (categories.size() - 1);
}

QColor colorOfSound(quint64 categories)
{
    return QColor::fromHsv((205 + 72 * std::countr_zero(categories)) % 360, 170, 190);
}
