// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/QImage>

namespace dravelin::detail {

/// Clear pixels to paint on.
/// \param size in points
/// \return a null image for an empty size, and, with a line in the log, for one that cannot be had
[[nodiscard]] QImage makeCanvas(const QSizeF &size, double devicePixelRatio);

} // namespace dravelin::detail
