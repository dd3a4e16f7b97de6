// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qglobal.h>

#include <span>

namespace dravelin::detail {

/// Rounds numbers of which 1 is full scale to samples; what is beyond full scale is clipped, what is no number is silent.
/// \param out at least as many
void convertSamples(std::span<const float> in, std::span<qint16> out);

} // namespace dravelin::detail
