// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

namespace dravelin {

/// The numbers in the text form of a point, size or rectangle, braces aside; none when one cannot be read.
[[nodiscard]] QList<double> geometryNumbers(QString text);

} // namespace dravelin
