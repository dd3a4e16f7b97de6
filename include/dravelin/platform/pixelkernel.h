// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QSize>
#include <QtCore/QVariantMap>

#include <functional>

namespace dravelin {

/// Some neighbouring pixels of one row, each channel in a row of its own: sRGB-encoded, not premultiplied, from 0 to 1
/// unless a filter before has left that range.
struct PixelBlock
{
    float *red;
    float *green;
    float *blue;
    float *alpha;
    int count;  ///< pixels in the block, up to 512
    int x, y;   ///< of the first one in the picture
    QSize size; ///< of the picture
};

/// Changes the pixels of a block in place. It is called from several threads at once, and any pixel once.
/// \param values the filter's inputs by key
using PixelKernel = std::function<void(const PixelBlock &block, const QVariantMap &values)>;

} // namespace dravelin
