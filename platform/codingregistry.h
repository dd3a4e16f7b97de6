// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/coding.h>

/// The classes that registerCodingClass() made known.
namespace dravelin::detail {

/// The name under which the class is written; absent when it was never registered.
[[nodiscard]] QString codingClassName(const std::type_info &type);

/// What makes an object of the class of that name; empty when there is none.
[[nodiscard]] std::function<CodingPointer()> codingClassCreator(const QString &name);

} // namespace dravelin::detail
