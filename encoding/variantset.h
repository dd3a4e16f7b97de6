// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QHash>
#include <QtCore/QVariant>

namespace dravelin::detail {

/// Tells whether an object equals one of some others, as QVariant compares: numbers by value whatever their types.
class VariantSet
{
public:
    explicit VariantSet(const QVariantList &objects);
    [[nodiscard]] bool contains(const QVariant &object) const;

private:
    QHash<size_t, QVariantList> m_buckets;
};

} // namespace dravelin::detail
