// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/pixelkernels.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace dravelin::detail {

/// One step of a rendering. Used by several threads at once.
class RenderStage
{
public:
    virtual ~RenderStage() = default;
    virtual void apply(PixelRow &row) const = 0;
};

using RenderStages = std::vector<std::unique_ptr<RenderStage>>;

/// What a chain of filters comes to: a picture and what is done with each block of it.
struct RenderProgram
{
    QImage source; ///< 32 bits per pixel; null when there is nothing to render
    RenderStages stages;
    bool isOpaque = false; ///< every pixel of the result

    /// Only one matrix, of a picture that is opaque.
    std::unique_ptr<ByteMatrix> bytes;
};

/// Runs the program over the rows from `top` to before `bottom`, and calls `done()` with each block in `row`.
template <typename Done>
void forEachBlock(const RenderProgram &program, int top, int bottom, PixelRow &row, const Done &done);

/// Fills a row by the pixels of a picture whose origin is that of the rendering; it is clear outside.
void loadRow(const QImage &image, PixelRow &row);

template <typename Done>
void forEachBlock(const RenderProgram &program, int top, int bottom, PixelRow &row, const Done &done)
{
    row.size = program.source.size();
    for (row.y = top; row.y < bottom; ++row.y) {
        for (row.x = 0; row.x < row.size.width(); row.x += PixelRow::capacity) {
            row.count = std::min(PixelRow::capacity, row.size.width() - row.x);
            loadRow(program.source, row);
            for (const auto &stage : program.stages)
                stage->apply(row);
            done();
        }
    }
}

} // namespace dravelin::detail
