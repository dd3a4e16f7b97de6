// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

namespace dravelin {

/// \name Identity of the library that is loaded
/// With C linkage, so that `dlsym` finds them by their names. `DRAVELIN_VERSION` in version.h is the version that a
/// program was compiled against.
/// @{
extern "C" {

/// 1.0.
extern DRAVELIN_EXPORT const double DravelinVersionNumber;

/// The text "@(#)PROGRAM:Dravelin  PROJECT:Dravelin-1" and a line feed. `what` and `strings` find it in the library's
/// file.
extern DRAVELIN_EXPORT const char DravelinVersionString[];

} // extern "C"
/// @}

} // namespace dravelin
