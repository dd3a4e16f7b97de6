// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QString>

namespace dravelin::detail {

/// Appends what doubleToStr() returns.
void appendFixed(QString &text, double value, qint64 decimals);

} // namespace dravelin::detail
