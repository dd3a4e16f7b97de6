// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QRectF>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace dravelin {

/// \name Frames of widgets
/// A widget's place in its parent in doubles, where QWidget::geometry() has whole pixels and no negative sizes. For the
/// thread of the widgets.
///
///     dravelin::setFrame(label, {0, 33.25, 120, 20});
///     label->geometry();         // QRect(0, 33, 120, 20)
///     dravelin::frame(label);    // QRectF(0, 33.25, 120, 20)
/// @{
inline namespace Frames {

/// The frame as setFrame() set it. Position or size come from the geometry instead when they were never set, or when the
/// widget was moved or resized by something else since then, its own size limits included.
/// \return a null rectangle for no widget
/// \cost one look-up
[[nodiscard]] DRAVELIN_EXPORT QRectF frame(const QWidget *widget);

/// Places the widget at the pixels nearest to the frame's edges (half a pixel goes right and down), so that frames that
/// touch give geometries that touch. A negative size gives a widget without any pixel in that direction; the frame keeps it.
/// The exact frame is kept, while the widget lives, only where pixels cannot tell it.
/// \param frame in pixels of the parent, or of the desktop for a window; a place that is not a number counts as 0 on
/// screen
DRAVELIN_EXPORT void setFrame(QWidget *widget, const QRectF &frame);

} // namespace Frames
/// @}

} // namespace dravelin
