// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

namespace dravelin {

/// The `-key value` pairs of a command line whose first element is the program.
[[nodiscard]] QVariantMap argumentDomain(const QStringList &arguments);

} // namespace dravelin
