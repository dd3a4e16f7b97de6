// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QHash>
#include <QtCore/QVariant>

namespace dravelin::detail {

/// Whether an object equals one of some others: numbers by their exact value, whatever their types; pointers to
/// QObjects by address; everything else only within its type, by the type's operator ==. (QVariant's own comparison
/// holds the text "1" equal to the number 1, and -1 to 4294967295.)
class VariantSet
{
public:
    explicit VariantSet(const QVariantList &objects);
    [[nodiscard]] bool contains(const QVariant &object) const;

private:
    QHash<size_t, QVariantList> m_buckets;
};

} // namespace dravelin::detail
