// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QtGlobal>

#include <cstring>
#include <limits>
#include <type_traits>

namespace dravelin::detail {

/// A signed integer of the float's width.
template <typename Float>
using FloatKey = std::conditional_t<sizeof(Float) == 4, qint32, qint64>;

/// Turns floats into integers of the same order in their place, -0.0 before 0.0, or those integers back into the floats
/// they were, bit by bit.
///
/// An IEEE 754 float of positive sign is ordered as its bits are, one of negative sign the other way round; so the bits
/// below a set sign are inverted, which undoes itself.
/// \return whether there is a NaN; of use the first time only
template <typename Float>
bool exchangeFloatsAndKeys(Float *elements, std::size_t count)
{
    using Key = FloatKey<Float>;
    constexpr Key magnitude = std::numeric_limits<Key>::max();
    constexpr Float infinity = std::numeric_limits<Float>::infinity();
    Key infinityBits;
    std::memcpy(&infinityBits, &infinity, sizeof(Key));
    Key largest = 0;
    for (std::size_t i = 0; i < count; ++i) {
        Key key;
        std::memcpy(&key, elements + i, sizeof(Key));
        largest = largest > (key & magnitude) ? largest : key & magnitude;
        key ^= (key >> std::numeric_limits<Key>::digits) & magnitude;
        std::memcpy(static_cast<void *>(elements + i), &key, sizeof(Key));
    }
    return largest > infinityBits;
}

} // namespace dravelin::detail
