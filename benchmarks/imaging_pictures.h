// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/QImage>

/// The pictures of the imaging benchmarks, 6000 x 4000 opaque pixels.
/// @{
const QImage &benchmarkPhoto();
const QImage &benchmarkBackground();
/// @}
