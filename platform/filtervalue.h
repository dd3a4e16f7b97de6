// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <optional>

namespace dravelin::detail {

/// A value in the form in which filters keep it: a number as it is, a Color with components, a FilterImage; invalid for
/// what clears an input, such as a null image.
/// \param type that of the input, such as kCIAttributeTypeScalar
/// \return nothing when the value is not of that type
[[nodiscard]] std::optional<QVariant> filterValue(const QVariant &value, const QString &type);

/// \return the class of an input's values: "NSNumber", "CIColor" or "CIImage"
[[nodiscard]] QString filterValueClass(const QString &type);

} // namespace dravelin::detail
