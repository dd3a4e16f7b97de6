// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/imaging/pixellist.h>

#include <QtGui/QImage>

namespace dravelin::detail {

/// Adds the pixels of the image's first columns and rows whose alpha is below 255, column by column, each from the top.
/// \param image of format RGB32, ARGB32 or premultiplied ARGB32, at least that large
/// \throws Exception NSMallocException
void listTranslucent(const QImage &image, int columns, int rows, PixelList &list);

/// Writes the alpha samples of the listed pixels that are in the image.
/// \param image of format ARGB32
void writeListedAlpha(QImage &image, const PixelList &list);

} // namespace dravelin::detail
