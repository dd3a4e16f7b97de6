// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/display.h>

#include <QtCore/QRectF>

namespace dravelin::detail {

/// The frames that createScreensFrameList() gives, of these screens.
[[nodiscard]] QList<QRectF> frameList(const QList<ScreenInfo> &screens);

/// The part of the screen that its panels leave to other windows, in pixels.
[[nodiscard]] QRect pixelsBetweenPanels(const ScreenInfo &screen, const QList<WindowInfo> &windows);

/// Pixels of the X server on this screen, in Qt's coordinates.
[[nodiscard]] QRectF fromPixels(const QRect &area, const ScreenInfo &screen);

} // namespace dravelin::detail
