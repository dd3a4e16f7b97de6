// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/buildidentity.h>

namespace dravelin {

const double DravelinVersionNumber = 1.0;

// Aligned, so that zeros and not the end of some other text are in front of it in the file.
alignas(64) const char DravelinVersionString[] = "@(#)PROGRAM:Dravelin  PROJECT:Dravelin-1\n";

} // namespace dravelin
