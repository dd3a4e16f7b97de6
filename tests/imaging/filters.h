// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/filterimage.h>

#include <platform/filterrecipe.h>

#include <QtCore/QRandomGenerator>

namespace dravelin::testing {

using Pictures = QMap<QString, FilterImage>;

/// A filter's output image.
inline FilterImage filtered(const FilterImage &input, const QString &filter, const QVariantMap &values = {},
                            const Pictures &pictures = {})
{
    auto recipe = std::make_shared<detail::Recipe>();
    recipe->filter = filter;
    recipe->values = values;
    recipe->images.insert(QStringLiteral("inputImage"), input.recipe());
    for (auto it = pictures.begin(); it != pictures.end(); ++it)
        recipe->images.insert(it.key(), it->recipe());
    return FilterImage(std::move(recipe));
}

/// Random pixels, every fourth one opaque or clear. With a fixed seed.
inline QImage randomPicture(int width, int height, QImage::Format format, quint32 seed = 1)
{
    QRandomGenerator random(seed);
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const quint32 pixel = random.generate();
            const quint32 alpha = x % 8 == 0 ? 0xff000000U : x % 8 == 4 ? 0 : pixel & 0xff000000U;
            image.setPixel(x, y, (pixel & 0xffffffU) | alpha);
        }
    }
    if (format == QImage::Format_RGB32)
        image.reinterpretAsFormat(format);
    return image.convertToFormat(format);
}

} // namespace dravelin::testing
