// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/renderstage.h>

#include <dravelin/platform/filterimage.h>

namespace dravelin::detail {

/// \return a fresh picture: RGB32 when the program is opaque, else ARGB32 premultiplied; null when it was cancelled or
///         there is nothing to render
/// \throws std::bad_alloc, and what progress and kernels throw
[[nodiscard]] QImage render(const RenderProgram &program, const RenderOptions &options);

/// \param target of the program's size and with 32 bits per pixel
/// \return whether it went through to the end
bool renderInto(const RenderProgram &program, QImage &target, const RenderOptions &options);

} // namespace dravelin::detail
