// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace dravelin {

/// Makes ready for soundAlert(): finds the terminal and, in an application with windows, hooks into its event loop.
void prepareAlert();

/// Sounds the desktop's alert as soon as the event loop gets to it, and the terminal's bell at once where there is a
/// terminal. For signal handlers; never blocks.
void soundAlert() noexcept;

} // namespace dravelin
