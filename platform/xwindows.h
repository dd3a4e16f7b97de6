// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/display.h>

namespace dravelin {

/// The windows that the X server of `DISPLAY` shows, those in front first; empty without a server.
[[nodiscard]] QList<WindowInfo> xWindows();

} // namespace dravelin
