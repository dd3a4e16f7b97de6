// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "table/photocell.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtGui/QImageReader>
#include <QtGui/QPixmapCache>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize thumbnailSize(64, 40);

int cells = 0;

QPixmap thumbnail(const QString &path)
{
    QPixmap pixmap;
    if (QPixmapCache::find(path, &pixmap))
        return pixmap;
    QImageReader reader(path);
    reader.setScaledSize(reader.size().scaled(thumbnailSize, Qt::KeepAspectRatio));
    pixmap = QPixmap::fromImage(reader.read());
    QPixmapCache::insert(path, pixmap);
    return pixmap;
}

QPixmap swatch(qint64 number)
{
    QPixmap pixmap(thumbnailSize);
    pixmap.fill(QColor::fromHsv(int(number * 67 % 360), 150, 235));
    return pixmap;
}

} // namespace

PhotoCell::PhotoCell() : m_thumbnail(new QLabel), m_name(new QLabel), m_details(new QLabel)
{
    ++cells;
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    m_thumbnail->setFixedSize(thumbnailSize);
    m_thumbnail->setAlignment(Qt::AlignCenter);
    layout->addWidget(m_thumbnail);
    layout->addWidget(m_name, 1);
    layout->addWidget(m_details);
}

PhotoCell::~PhotoCell() { --cells; }

int PhotoCell::count() noexcept { return cells; }

void PhotoCell::showPhoto(const QString &path)
{
    const QFileInfo file(path);
    show(thumbnail(path), file.completeBaseName().replace(u'_', u' '),
         QLocale().formattedDataSize(file.size(), 0, QLocale::DataSizeTraditionalFormat));
}

void PhotoCell::showNumber(qint64 number) { show(swatch(number), tr("Picture %L1").arg(number), tr("of a million")); }

void PhotoCell::show(const QPixmap &thumbnail, const QString &name, const QString &details)
{
    m_thumbnail->setPixmap(thumbnail);
    m_name->setText(name);
    m_details->setText(details);
}
