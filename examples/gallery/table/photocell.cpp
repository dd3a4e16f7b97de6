// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "table/photocell.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QThreadPool>
#include <QtGui/QImageReader>
#include <QtGui/QPixmapCache>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize thumbnailSize(64, 40);

int cells = 0;
int readings = 0;

QImage thumbnail(const QString &path, double pixelRatio)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const bool isOnItsSide = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    const QSize most = (isOnItsSide ? thumbnailSize.transposed() : thumbnailSize) * pixelRatio;
    reader.setScaledSize(reader.size().scaled(most, Qt::KeepAspectRatio));
    QImage image = reader.read();
    image.setDevicePixelRatio(pixelRatio);
    return image;
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

int PhotoCell::awaited() noexcept { return readings; }

void PhotoCell::showPhoto(const QString &path)
{
    const QFileInfo file(path);
    QPixmap pixmap;
    const bool isRead = QPixmapCache::find(path, &pixmap);
    show(pixmap, file.completeBaseName().replace(u'_', u' '),
         QLocale().formattedDataSize(file.size(), 0, QLocale::DataSizeTraditionalFormat));
    if (!isRead)
        readThumbnail(path);
}

/// On another thread, since a large photo takes longer than a picture of the screen. What was scrolled out of sight
/// before its turn came is left out.
void PhotoCell::readThumbnail(const QString &path)
{
    m_reading = std::make_shared<int>();
    ++readings;
    const std::weak_ptr<int> wanted = m_reading;
    const auto take = [this, wanted, path](const QImage &image) {
        --readings;
        if (!wanted.expired())
            takeThumbnail(path, image);
    };
    QThreadPool::globalInstance()->start([take, wanted, path, ratio = devicePixelRatioF()] {
        const QImage image = wanted.expired() ? QImage() : thumbnail(path, ratio);
        if (QCoreApplication *application = QCoreApplication::instance())
            QMetaObject::invokeMethod(application, [take, image] { take(image); });
    });
}

void PhotoCell::takeThumbnail(const QString &path, const QImage &image)
{
    if (image.isNull())
        return m_details->setText(tr("cannot be read"));
    const QPixmap pixmap = QPixmap::fromImage(image);
    QPixmapCache::insert(path, pixmap);
    m_thumbnail->setPixmap(pixmap);
}

void PhotoCell::showNumber(qint64 number) { show(swatch(number), tr("Picture %L1").arg(number), tr("of a million")); }

void PhotoCell::show(const QPixmap &thumbnail, const QString &name, const QString &details)
{
    m_reading.reset();
    m_thumbnail->setPixmap(thumbnail);
    m_name->setText(name);
    m_details->setText(details);
}
