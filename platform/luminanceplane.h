// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/renderstage.h>

namespace dravelin::detail {

/// How bright a picture is round each pixel.
class LuminancePlane
{
public:
    /// The mean of luminance over a square of 2 * radius + 1 pixels, twice; the picture's edges go on beyond it, and
    /// clear pixels do not count.
    /// \throws std::bad_alloc
    LuminancePlane(const RenderProgram &program, int radius);

    /// The pixels of the row's place.
    void read(const PixelRow &row, float *light) const;

private:
    using Plane = std::vector<quint16>;

    void fill(const RenderProgram &program);
    void blur(Plane &plane, int radius) const;

    int m_width, m_height;
    Plane m_light, m_alpha; ///< 65535 is 1; light times alpha; no alpha when all is opaque
};

} // namespace dravelin::detail
