// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/display.h>

#include "platform/xwindowwatch.h"

namespace dravelin {

/// The windows that the X server shows, those in front first. What it says is incomplete when the server goes meanwhile.
/// \param watch listens to them from now on; null for none
[[nodiscard]] QList<WindowInfo> listXWindows(const XConnection &server, XWindowWatch *watch);

} // namespace dravelin
