// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/QImage>

/// Reads a picture, turned upright, in sRGB.
/// \throws Failure
QImage readImage(const QString &path);

/// Writes a picture in the format that the suffix names. A file that is there stays as it is unless all goes well.
/// \param quality 0 to 100; -1 for the format's own
/// \throws Failure
void writeImage(const QImage &image, const QString &path, int quality);
