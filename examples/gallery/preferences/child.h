// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QStringList>

/// \name The gallery as a second process
/// Works on the preferences page's store without a window, for the page's tour.
///
///   - `--child series`: changes the settings without end and prints each change once it is saved
///   - `--child set KEY VALUE`: changes one setting
///   - `--child report`: prints the settings
/// @{
/// \return the exit code
[[nodiscard]] int runChild(const QStringList &arguments);

/// The change number `round` of a series: what the setting `pages` then is.
[[nodiscard]] constexpr int pagesInRound(int round) { return 1000 + round; }
/// @}
