// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/linebuffer.h"

namespace dravelin {

/// Appends the linker's name of a function, as the source has it where that takes no more than reading: "app::Editor::save"
/// for a function in namespaces and classes; without parameters. Templates and operators stay as they are.
void appendPlainName(LineBuffer &line, std::string_view linkerName) noexcept;

} // namespace dravelin
