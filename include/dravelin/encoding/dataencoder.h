// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QSharedDataPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <limits>

namespace dravelin {

namespace detail {
class RecordTable;
}

/// A small store of texts under keys that becomes one opaque piece of ASCII, fit for a text column, a settings entry or
/// a clipboard, and back.
///
///     dravelin::DataEncoder encoder;
///     encoder.addString("title", "Sketch");
///     encoder.addInteger("pages", 12);
///     const QByteArray blob = encoder.encodeData();
///
///     const auto copy = dravelin::DataEncoder::initWithData(blob);
///     copy.getInteger("pages");                               // 12
///     copy.getString("author");                               // "": nothing is stored there
///
/// Everything is stored as text; what it is read as is the reader's choice. The blob is Base64 of a zlib stream of
/// records: the key, a comma, the Base64 of the value's UTF-8 bytes and a carriage return.
///
/// Nothing is reported to the caller; what goes wrong is logged. Copies are cheap: they share their contents until one
/// is changed. An encoder is used by one thread at a time.
class DRAVELIN_EXPORT DataEncoder
{
public:
    /// Empty.
    /// \operation{init}
    DataEncoder();
    DataEncoder(const DataEncoder &other); // a moved-from encoder stays usable: moving copies the pointer
    DataEncoder &operator=(const DataEncoder &other);
    ~DataEncoder();

    /// A new encoder with the blob's contents, by decodeData().
    /// \operation{initWithData:}
    [[nodiscard]] static DataEncoder initWithData(const QByteArray &data, qsizetype maximumSize = Unbounded);

    /// The blob, without line breaks; empty bytes when the encoder is empty. Records stand in the order in which their
    /// keys were first added, so equal contents added in equal order give equal blobs.
    /// \throws Exception NSMallocException when memory runs out
    /// \cost that of compressing the records
    /// \operation{encodeData}
    [[nodiscard]] QByteArray encodeData() const;

    /// Replaces the contents by the blob's. White space in the blob and missing padding are tolerated. A record with
    /// more than one comma, or none, gives an empty value under what stands before the first comma; of two records with
    /// one key the later counts. What is no such blob at all leaves the encoder empty.
    /// \param maximumSize the most bytes that the blob's records may have; a blob with more leaves the encoder empty.
    /// Set it for blobs from outside: 1 MiB of them may hold 700 MiB.
    /// \operation{decodeData:}
    void decodeData(const QByteArray &data, qsizetype maximumSize = Unbounded);

    /// \name Storing
    /// A value replaces an earlier one of its key. Keys hold anything but commas and carriage returns; a key with one is
    /// found here, but not in a decoded blob, where "a,b" is "a" with an empty value. A key without UTF-8 form (half of a
    /// surrogate pair) is refused.
    /// @{

    /// Empty or absent text removes the key, and so does text that has no UTF-8 form.
    /// \operation{addString:value:}
    void addString(const QString &key, const QString &value);
    /// Stores the signed decimal of the low 32 bits: 4294967297 reads as 1.
    /// \operation{addInteger:value:}
    void addInteger(const QString &key, qint64 value);
    /// Stores "YES" or "NO".
    /// \operation{addBool:value:}
    void addBool(const QString &key, bool value);
    /// @}

    /// \name Reading
    /// @{

    /// \return empty text when the key is not there; absent text when its entry is not Base64 of UTF-8 text, as only one
    /// from a damaged blob can be
    /// \operation{getString:}
    [[nodiscard]] QString getString(const QString &key) const;
    /// The value as strToInt() reads it: 0 for text that is no number, at most 32 bits.
    /// \operation{getInteger:}
    [[nodiscard]] qint64 getInteger(const QString &key) const;
    /// The value as strToBool() reads it: true for "YES", false for "NO" and for nothing.
    /// \operation{getBool:}
    [[nodiscard]] bool getBool(const QString &key) const;
    /// The same as getString().
    /// \operation{getHandler:}
    [[nodiscard]] QString getHandler(const QString &key) const;
    /// @}

    /// \name Entries
    /// The form in which a record holds a value.
    /// @{

    /// Base64 of the text's UTF-8 bytes; absent for empty and absent text and for text that has no UTF-8 form.
    /// \operation{encodeDataEntry:}
    [[nodiscard]] static QString encodeDataEntry(const QString &value);
    /// The value of an entry; absent when it is not Base64 of UTF-8 text.
    /// \operation{decodeDataEntry:}
    [[nodiscard]] static QString decodeDataEntry(const QString &entry);
    /// @}

    /// \name As a container
    /// @{

    /// In the order in which they were first added.
    [[nodiscard]] QStringList keys() const;
    /// True also for a key with an empty value, as a damaged record leaves one.
    [[nodiscard]] bool contains(const QString &key) const;
    [[nodiscard]] qsizetype count() const;
    [[nodiscard]] bool isEmpty() const { return count() == 0; }
    /// \return whether the key was there
    bool remove(const QString &key);
    void clear();
    /// @}

private:
    static constexpr qsizetype Unbounded = std::numeric_limits<qsizetype>::max();

    void add(const QString &key, const QByteArray &value);

    QSharedDataPointer<detail::RecordTable> d;
};

} // namespace dravelin
