// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/imaging/pixellist.h>

#include <QtGui/QImage>

namespace dravelin::detail {

/// Whether the listed pixels of an image have the alpha samples of the list. Those outside the image count as if.
/// \param image of format RGB32, ARGB32 or premultiplied ARGB32; in the first no listed pixel has
[[nodiscard]] bool haveListedAlpha(const QImage &image, const PixelList &list);

/// Writes the alpha samples of the listed pixels that are in the image.
/// \param image of format ARGB32
void writeListedAlpha(QImage &image, const PixelList &list);

} // namespace dravelin::detail
