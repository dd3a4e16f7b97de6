// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "imagefiles.h"

#include "filtertext.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtGui/QColorSpace>
#include <QtGui/QImageReader>
#include <QtGui/QImageWriter>

using namespace Qt::StringLiterals;

QImage readImage(const QString &path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    QImage image = reader.read();
    if (image.isNull())
        throw Failure(u"%1 cannot be read: %2"_s.arg(path, reader.errorString()));
    const QColorSpace space = image.colorSpace();
    if (space.isValid() && space != QColorSpace(QColorSpace::SRgb))
        image.convertToColorSpace(QColorSpace::SRgb);
    return image;
}

void writeImage(const QImage &image, const QString &path, int quality)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw Failure(u"%1 cannot be written: %2"_s.arg(path, file.errorString()));
    QImageWriter writer(&file, QFileInfo(path).suffix().toLower().toLatin1());
    writer.setQuality(quality);
    if (!writer.write(image))
        throw Failure(u"%1 cannot be written: %2"_s.arg(path, writer.errorString()));
    // On a full disk commit alone reports success.
    if (!file.flush() || !file.commit())
        throw Failure(u"%1 cannot be written: %2"_s.arg(path, file.errorString()));
}
