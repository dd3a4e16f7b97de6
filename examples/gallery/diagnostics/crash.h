// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QStringList>

/// \name The gallery as a process that crashes
/// `--crash exception|signal|overflow|abort`, for the diagnostics page: installs the error handlers and does it.
/// @{
[[nodiscard]] int runCrash(const QString &way);

/// The ways to crash that runCrash() knows.
[[nodiscard]] QStringList waysToCrash();
/// @}
