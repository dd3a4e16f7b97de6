// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/colormatrix.h>
#include <platform/filterrecipe.h>
#include <platform/renderstage.h>

#include <QtCore/QHash>

namespace dravelin::detail {

/// The picture at the beginning of a chain; null when there is none.
[[nodiscard]] const Recipe *sourceOf(const Recipe *recipe);

/// Turns chains of filters into programs: neighbouring filters that are matrices become one, those at their identity
/// nothing, and further pictures that are chains themselves are rendered, each once.
class RenderCompiler
{
public:
    /// \param threads as in RenderOptions
    explicit RenderCompiler(int threads) : m_threads(threads) {}

    /// \throws std::bad_alloc
    [[nodiscard]] RenderProgram compile(const Recipe &recipe);

private:
    friend class ProgramBuilder;
    [[nodiscard]] QImage picture(const std::shared_ptr<const Recipe> &recipe);

    int m_threads;
    int m_depth = 0;
    QHash<const Recipe *, QImage> m_pictures;
};

} // namespace dravelin::detail
