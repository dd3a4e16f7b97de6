// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/exception.h>
#include <dravelin/platform/export.h>
#include <dravelin/platform/range.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <memory>
#include <optional>
#include <set>
#include <type_traits>
#include <utility>

/// \file
/// Additions to lists, text, maps and bytes.
///
///     QVariantList jobs;
///     dravelin::enqueue(jobs, "first");
///     dravelin::enqueue(jobs, "second");
///     dravelin::dequeue(jobs);                                    // "first"
///     dravelin::trimWhiteSpace(u" a b\n"_s);                      // "a b"
///     dravelin::stripString(u"+49 (0)89"_s, u"0123456789"_s);     // "49089"
///
/// The list operations take any QList; QVariantList is the list of mixed objects. An index outside the list throws an
/// Exception, NSRangeException, with the index and the count in its reason, unless said otherwise; the list is then as
/// before.

namespace dravelin {

namespace detail {

/// What an operation hands out that may find nothing: of objects and pointers an absent one, else an empty optional.
template <typename T>
struct Taken
{
    using Type = std::optional<T>;
};
template <>
struct Taken<QVariant>
{
    using Type = QVariant;
};
template <typename T>
struct Taken<T *>
{
    using Type = T *;
};
template <typename T>
struct Taken<std::shared_ptr<T>>
{
    using Type = std::shared_ptr<T>;
};

/// \throws Exception NSRangeException unless 0 <= index < bound
DRAVELIN_EXPORT void checkIndex(qint64 index, qsizetype bound, qsizetype count);

} // namespace detail

/// An element of a list, or nothing: QVariant and pointers are their own absent value, anything else is in a
/// std::optional.
template <typename T>
using Taken = typename detail::Taken<T>::Type;

/// One list as a stack or as a queue: its end is the top of the stack and the head of the queue.
inline namespace StackQueue {

/// Appends at the end.
/// \operation{push:}
template <typename T>
void push(QList<T> &list, std::type_identity_t<T> object)
{
    list.append(std::move(object));
}

/// Removes the last object.
/// \return it, or nothing when the list is empty
/// \operation{pop}
template <typename T>
Taken<T> pop(QList<T> &list)
{
    return list.isEmpty() ? Taken<T>() : Taken<T>(list.takeLast());
}

/// Inserts at the front, to come out by dequeue() after everything that is there now.
/// \operation{enqueue:}
template <typename T>
void enqueue(QList<T> &list, std::type_identity_t<T> object)
{
    list.prepend(std::move(object));
}

/// The same as pop().
/// \operation{dequeue}
template <typename T>
Taken<T> dequeue(QList<T> &list)
{
    return pop(list);
}

/// The last object, which stays; nothing when the list is empty.
/// \operation{peek}
template <typename T>
[[nodiscard]] Taken<T> peek(const QList<T> &list)
{
    return list.isEmpty() ? Taken<T>() : Taken<T>(list.last());
}

} // namespace StackQueue

inline namespace Utilities {

/// \name Lists
/// @{

/// Whether 0 <= index < count.
/// \operation{rangeCheck:}
template <typename T>
[[nodiscard]] bool rangeCheck(const QList<T> &list, qint64 index) noexcept
{
    return index >= 0 && index < list.size();
}

/// Inserts at the index. Any index that is not in the list appends, a negative one too.
/// \operation{insertObjectSafe:atIndex:}
template <typename T>
void insertObjectSafe(QList<T> &list, std::type_identity_t<T> object, qint64 atIndex)
{
    list.insert(rangeCheck(list, atIndex) ? qsizetype(atIndex) : list.size(), std::move(object));
}

/// Exchanges two objects.
/// \operation{swap:with:}
template <typename T>
void swap(QList<T> &list, qint64 index, qint64 with)
{
    detail::checkIndex(index, list.size(), list.size());
    detail::checkIndex(with, list.size(), list.size());
    list.swapItemsAt(qsizetype(index), qsizetype(with));
}

/// Inserts the object found at `from` once more, by insertObjectSafe().
/// \operation{copy:toIndex:}
template <typename T>
void copy(QList<T> &list, qint64 from, qint64 toIndex)
{
    detail::checkIndex(from, list.size(), list.size());
    insertObjectSafe(list, list.at(qsizetype(from)), toIndex);
}

/// Moves the object at `from` to stand before the one that is now at `toIndex`, or at the end when there is none; does
/// nothing when `from` is outside. So A B C D becomes B A C D by move(list, 0, 2), and A D B C by move(list, 3, 1). A
/// negative `toIndex` moves to the end.
/// \operation{move:toIndex:}
template <typename T>
void move(QList<T> &list, qint64 from, qint64 toIndex)
{
    if (!rangeCheck(list, from))
        return;
    const bool toEnd = !rangeCheck(list, toIndex);
    list.move(qsizetype(from), toEnd ? list.size() - 1 : qsizetype(toIndex - (toIndex > from)));
}

/// Moves the rows, kept in order, to stand before the one that is now at `toIndex` (the count for the end).
///
/// Moves by value: every object equal to one of the moved ones goes, wherever it stands, and only one per row arrives.
/// The rows arrive in place of the first `QVariant::fromValue(nullptr)` of the list, which is used to mark the place;
/// in a list that holds such objects already the first of those is replaced and the mark stays.
/// \return where the rows stand now \throws Exception NSRangeException for a row or place outside, and when a moved
/// object is such a mark itself
/// \cost linear for text, numbers and pointers; other objects are compared with each moved one of their type
/// \operation{moveRows:toIndex:}
DRAVELIN_EXPORT Range moveRows(QVariantList &list, const std::set<qsizetype> &rows, qint64 toIndex);
/// @}

/// \name Text
/// Lengths and indexes count 16-bit units. Absent text gives absent text. White space is Unicode's, line ends included,
/// and the zero width space.
/// @{

/// Whether the length is 0.
/// \operation{isEmpty}
[[nodiscard]] DRAVELIN_EXPORT bool isEmpty(const QString &text) noexcept;

/// Without the white space at both ends.
/// \operation{trimWhiteSpace}
[[nodiscard]] DRAVELIN_EXPORT QString trimWhiteSpace(const QString &text);

/// The first `count` characters; all of them when there are fewer or the count is negative.
/// \operation{leftString:}
[[nodiscard]] DRAVELIN_EXPORT QString leftString(const QString &text, qint64 count);

/// All but the first `index` characters (not the last ones, whatever the name suggests); empty when there are no more
/// or the index is negative.
/// \operation{rightString:}
[[nodiscard]] DRAVELIN_EXPORT QString rightString(const QString &text, qint64 index);

/// The pieces between carriage returns after normalizeLineEndings() with mode 0; a final line break gives a final empty
/// piece. Text with line ends "\r\n" keeps the line feeds, at the start of its pieces. Absent text has no pieces.
/// \operation{splitIntoLines}
[[nodiscard]] DRAVELIN_EXPORT QStringList splitIntoLines(const QString &text);

/// Writes the line ends as mode 0 "\r", 1 "\r\n" or 2 "\n". What they are now is judged by the first carriage return
/// alone: "\r\n" counts as done in every mode, and mixed line ends are not reconciled.
/// \return absent text for any other mode, unless the text has no line ends
/// \operation{normalizeLineEndings:}
[[nodiscard]] DRAVELIN_EXPORT QString normalizeLineEndings(const QString &text, qint32 mode);

/// The characters of the text that are among `characters`, in order; never white space.
/// \operation{stripString:}
[[nodiscard]] DRAVELIN_EXPORT QString stripString(const QString &text, const QString &characters);

/// Text of one 16-bit unit.
/// \operation{unichar:}
[[nodiscard]] DRAVELIN_EXPORT QString unichar(char16_t code);
/// @}

/// \name Maps and bytes
/// @{

/// Every key followed by a carriage return, the last one too, in the map's order.
/// \operation{dumpAllKeys}
[[nodiscard]] DRAVELIN_EXPORT QString dumpAllKeys(const QVariantMap &map);

/// Two upper-case hexadecimal digits and a space for each byte, the last one too: "0A FF ".
/// \operation{dump}
[[nodiscard]] DRAVELIN_EXPORT QString dump(const QByteArray &bytes);
/// @}

} // namespace Utilities

} // namespace dravelin
