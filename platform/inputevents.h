// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/event.h>

#include <QtCore/qnamespace.h>

namespace dravelin {

/// A sum of Event::ModifierFlag; Qt does not know caps lock.
[[nodiscard]] quint64 modifierFlagsOf(Qt::KeyboardModifiers modifiers);

[[nodiscard]] Event::Type eventType(const QEvent &event);

/// Milliseconds on the window system's clock; 0 when the event bears no time.
[[nodiscard]] quint64 eventTime(const QEvent &event);

/// Qt's place on the desktop as points from the lower left corner of the primary screen; the zero point without screens.
[[nodiscard]] QPointF upwardPoint(QPointF place);

} // namespace dravelin
