// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

namespace dravelin::detail {

/// Converts all of the text from `first` to `last`, a number that `strtof` would take, as if in the "C" locale: too
/// large is an infinity, too small 0. The byte at `last` must be readable and 0.
/// @{
[[nodiscard]] float toFloat(const char *first, const char *last);
[[nodiscard]] double toDouble(const char *first, const char *last);
/// @}

/// Reads one number as `scanf` does for "%f": skips white space, then takes the longest run that could begin a number,
/// even where the number itself is shorter ("1e+x" loses its "1e+"). \param position moves behind what was taken;
/// undefined on failure \param end the text's final 0 byte \return false when there is no number, leaving `value` alone
[[nodiscard]] bool scanFloat(const char *&position, const char *end, float &value);

} // namespace dravelin::detail
