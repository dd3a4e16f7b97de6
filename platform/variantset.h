// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QHash>
#include <QtCore/QVariant>

namespace dravelin::detail {

/// Whether an object equals one of some others: numbers by their exact value, whatever their types; pointers to
/// QObjects by address; lists and maps by what is in them; everything else only within its type, by the type's operator
/// ==. (QVariant's own comparison holds the text "1" equal to the number 1, and -1 to 4294967295.)
class VariantSet
{
public:
    explicit VariantSet(const QVariantList &objects);
    /// \cost constant for numbers, texts, bytes, dates, URLs, UUIDs, pointers, and lists and maps of them; logarithmic in
    /// the number of objects for other types that have an order, else linear
    [[nodiscard]] bool contains(const QVariant &object) const;

private:
    QHash<size_t, QVariantList> m_buckets;
    QHash<int, QVariantList> m_ordered; ///< by type, sorted
};

} // namespace dravelin::detail
