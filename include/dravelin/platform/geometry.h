// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/range.h>

#include <QtCore/QRectF>
#include <QtCore/QString>

namespace dravelin {

/// \name Text forms of geometry
/// Numbers have up to 17 significant digits, so that reading the text gives the same number, and a point in every
/// locale: 0.1 is "0.10000000000000001", 640 is "640".
///
///     qInfo() << dravelin::NSStringFromRect(view->geometry());    // "{{0, 0}, {640, 480}}"
/// @{

/// \return "{x, y}"
/// \operation{NSStringFromPoint}
[[nodiscard]] DRAVELIN_EXPORT QString NSStringFromPoint(const QPointF &point);

/// \return "{width, height}"
/// \operation{NSStringFromSize}
[[nodiscard]] DRAVELIN_EXPORT QString NSStringFromSize(const QSizeF &size);

/// \return "{{x, y}, {width, height}}"
/// \operation{NSStringFromRect}
[[nodiscard]] DRAVELIN_EXPORT QString NSStringFromRect(const QRectF &rect);

/// \return "{location, length}"
/// \operation{NSStringFromRange}
[[nodiscard]] DRAVELIN_EXPORT QString NSStringFromRange(Range range);

/// The first two runs of decimal digits in the text, whatever stands around them, as location and length. One that is
/// missing is 0, one beyond 64 bits the largest number: "{3, 4}" gives 3 and 4, "7" gives 7 and 0.
/// \operation{NSRangeFromString}
[[nodiscard]] DRAVELIN_EXPORT Range NSRangeFromString(const QString &text);

/// @}

} // namespace dravelin
