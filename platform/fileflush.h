// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace dravelin {

/// Makes sure that the content of the open file is on the disk by the time its directory is flushed, once the file has been
/// renamed there.
/// \return false with errno set
[[nodiscard]] bool flushBeforeRename(int fd);

} // namespace dravelin
