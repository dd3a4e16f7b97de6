// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/collections.h>

#include <platform/variantset.h>

namespace dravelin {

using namespace Qt::StringLiterals;

void detail::checkIndex(qint64 index, qsizetype bound, qsizetype count)
{
    if (index < 0 || index >= bound)
        throw Exception(QLatin1String(NSRangeException), u"index %1 is outside a list of %2"_s.arg(index).arg(count));
}

Range Utilities::moveRows(QVariantList &list, const std::set<qsizetype> &rows, qint64 toIndex)
{
    const QVariant mark = QVariant::fromValue(nullptr);
    QVariantList moved;
    for (const qsizetype row : rows) {
        detail::checkIndex(row, list.size(), list.size());
        moved.append(list.at(row));
    }
    detail::checkIndex(toIndex, list.size() + 1, list.size());
    if (moved.contains(mark))
        throw Exception(QLatin1String(NSRangeException), u"the null placeholder cannot be moved"_s);

    QVariantList result = list;
    result.insert(qsizetype(toIndex), mark);
    result.removeIf([leaving = detail::VariantSet(moved)](const QVariant &object) { return leaving.contains(object); });
    const qsizetype place = result.indexOf(mark);
    list = result.first(place) + moved + result.sliced(place + 1);
    return {quint64(place), quint64(moved.size())};
}

} // namespace dravelin
