// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qglobal.h>

namespace dravelin {

/// A run of consecutive indexes, for instance rows of a list or characters of a text.
///
///     dravelin::Range rows{2, 3};     // 2, 3 and 4
struct Range
{
    quint64 location = 0; ///< the first index
    quint64 length = 0;   ///< how many; with none the location still says where

    friend bool operator==(const Range &, const Range &) = default;
};

} // namespace dravelin
