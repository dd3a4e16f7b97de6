// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "photo/looks.h"

#include <QtCore/QFileInfo>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>

using namespace Qt::StringLiterals;
using namespace dravelin;

const QList<CatalogueEntry> &wholeCatalogue()
{
    static const QList<CatalogueEntry> entries{
        {"Dissolve Transition", [](const QImage &second) { return dissolveTransitionFilter(second, 0.5F); }, false},
        {"Vignette", [](const QImage &) { return vignetteFilter(0.8F, 1.2F); }, false},
        {"Sepia Tone", [](const QImage &) { return sepiaFilter(1); }, false},
        {"Color Diminished", [](const QImage &) { return colorDiminishedFilter(); }, true},
        {"Color Exaggerated", [](const QImage &) { return colorExaggeratedFilter(); }, true},
        {"Color Distorted", [](const QImage &) { return colorDistortedFilter(); }, true},
        {"Color Cool", [](const QImage &) { return colorCoolFilter(); }, true},
        {"Color Warm", [](const QImage &) { return colorWarmFilter(); }, true},
        {"Black and White", [](const QImage &) { return blackAndWhiteFilter(); }, true},
        {"Black and White Diminished", [](const QImage &) { return blackAndWhiteDiminishedFilter(); }, true},
        {"Black and White Exaggerated", [](const QImage &) { return blackAndWhiteExaggeratedFilter(); }, true},
        {"Color Invert", [](const QImage &) { return colorInvertFilter(); }, true},
        {"False Color",
         [](const QImage &) { return falseColorFilter({}, Color::srgb(0.1, 0, 0.3), Color::srgb(1, 0.9, 0.5)); },
         false},
        {"Blend with Mask",
         [](const QImage &second) { return blendWithMaskFilter({}, second, rampImage(second.size())); }, false},
        {"Color Blend", [](const QImage &second) { return colorBlendFilter(second); }, false},
        {"Color Multiply Blend", [](const QImage &second) { return colorMultiplyBlendFilter(second); }, false},
        {"Hue Blend", [](const QImage &second) { return hueBlendFilter(second); }, false},
        {"Luminosity Blend", [](const QImage &second) { return luminosityBlendFilter(second); }, false},
        {"Saturation Blend", [](const QImage &second) { return saturationBlendFilter(second); }, false},
        {"Color", [](const QImage &) { return saturationBrightnessContrastFilter(1.4F, 0.05F, 1.2F); }, false},
        {"Saturation", [](const QImage &) { return saturationFilter(1.8F); }, false},
        {"Brightness", [](const QImage &) { return brightnessFilter(0.2F); }, false},
        {"Contrast", [](const QImage &) { return contrastFilter(1.6F); }, false},
        {"Exposure", [](const QImage &) { return exposureFilter(0.8F); }, false},
        {"Hue", [](const QImage &) { return hueFilter(90); }, false},
        {"Vibrance", [](const QImage &) { return vibranceFilter(0.9F); }, false},
        {"Shadows", [](const QImage &) { return shadowsFilter(0.8F); }, false},
    };
    return entries;
}

QImage somePhoto(QString *name)
{
    const QString path = u"/usr/share/backgrounds/seeding_by_Clements_Engelhardt.jpg"_s;
    QImage photo(path);
    if (name)
        *name = photo.isNull() ? u"made up"_s : QFileInfo(path).fileName();
    if (!photo.isNull())
        return photo;
    QImage picture(1600, 900, QImage::Format_RGB32);
    QPainter painter(&picture);
    for (int i = 0; i < 16; ++i)
        painter.fillRect(i * 100, 0, 100, 900, QColor::fromHsv(i * 22, 60 + i * 12, 250 - i * 6));
    painter.drawImage(0, 450, rampImage({1600, 450}));
    return picture;
}

QImage rampImage(const QSize &size)
{
    QImage ramp(size, QImage::Format_RGB32);
    QPainter painter(&ramp);
    QLinearGradient gradient(0, 0, size.width(), 0);
    gradient.setColorAt(0, Qt::black);
    gradient.setColorAt(1, Qt::white);
    painter.fillRect(ramp.rect(), gradient);
    return ramp;
}
