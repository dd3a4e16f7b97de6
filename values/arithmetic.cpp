// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values/conversions.h>

#include <QtCore/QRandomGenerator>

#include <random>

namespace dravelin {

float degreesToRadians(float degrees) noexcept { return static_cast<float>(degrees * 0.017453292519943295); }

float radiansToDegrees(float radians) noexcept { return static_cast<float>(radians * 57.29577951308232); }

qint32 randomValueBetween(qint32 lowest, qint32 highest)
{
    const quint32 span = quint32(highest) - quint32(lowest) + 1;
    if (span == 0)
        return lowest;
    // Not QRandomGenerator::bounded(), which favours some values slightly.
    std::uniform_int_distribution<quint32> offset(0, span - 1);
    return qint32(quint32(lowest) + offset(*QRandomGenerator::global()));
}

} // namespace dravelin
