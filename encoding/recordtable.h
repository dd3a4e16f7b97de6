// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QSharedData>

#include <optional>
#include <utility>
#include <vector>

namespace dravelin::detail {

/// Entries under keys, in the order in which the keys came. They lie in one piece of text, "key,entry\r" each, which is
/// what gets written: a table that was read or filled once is written without touching the records, and reading makes
/// no object per record.
class RecordTable : public QSharedData
{
public:
    RecordTable() = default;
    /// Reads records as DataEncoder::decodeData() says.
    explicit RecordTable(QByteArray text);

    void insert(QByteArrayView key, QByteArrayView entry);
    bool remove(QByteArrayView key);

    /// Valid until the table is changed.
    [[nodiscard]] std::optional<QByteArrayView> entry(QByteArrayView key) const;
    [[nodiscard]] qsizetype count() const { return m_count; }
    [[nodiscard]] QByteArray text() const;

    template <typename Function>
    void forEachKey(Function function) const
    {
        for (const Record &record : m_records) {
            if (record.isAlive())
                function(keyOf(record));
        }
    }

private:
    struct Record
    {
        qsizetype start;
        qsizetype keySize; ///< -1 when it was removed
        qsizetype entrySize;
        std::size_t hash;

        [[nodiscard]] bool isAlive() const { return keySize >= 0; }
        [[nodiscard]] qsizetype size() const { return keySize + entrySize + 2; }
    };

    [[nodiscard]] QByteArrayView keyOf(const Record &record) const;
    [[nodiscard]] QByteArrayView entryOf(const Record &record) const;
    [[nodiscard]] std::size_t slotOf(QByteArrayView key, std::size_t hash) const;
    void readRecord(qsizetype start, qsizetype end);
    void put(const Record &record);
    void index(std::size_t slotCount);
    void dropDeadText();

    QByteArray m_text;
    std::vector<Record> m_records;
    std::vector<quint32> m_slots; ///< open addressing: the number of a record, dead ones too, plus 1; 0 is free
    qsizetype m_count = 0;
    qsizetype m_liveSize = 0; ///< of the records as they are written
    bool m_isWritable = true; ///< whether the text is what is to be written
};

} // namespace dravelin::detail
