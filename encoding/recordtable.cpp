// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <encoding/recordtable.h>

#include <QtCore/QRandomGenerator>

#include <algorithm>
#include <cstring>

namespace dravelin::detail {

namespace {

/// Both halves of a product, so that every bit of the one factor acts on all of the result.
quint64 folded(quint64 a, quint64 b)
{
    __extension__ using Wide = unsigned __int128;
    const Wide product = Wide(a) * b;
    return quint64(product) ^ quint64(product >> 64);
}

quint64 eightBytes(const char *bytes, qsizetype size)
{
    quint64 result = 0;
    std::memcpy(&result, bytes, std::size_t(std::min<qsizetype>(size, 8)));
    return result;
}

/// Seeded, so that nobody can make keys that collide. Qt's own takes a good part of a microsecond for a short key where
/// the AES instructions are slow, as they are in some virtual machines: more than all the rest of reading a record.
std::size_t hashOf(QByteArrayView key)
{
    static const auto [seed, factor] = [] {
        const quint64 random = QRandomGenerator::global()->generate64();
        return std::pair(random, QRandomGenerator::global()->generate64() | 1);
    }();
    quint64 hash = folded(seed ^ quint64(key.size()), factor);
    for (qsizetype i = 0; i < key.size(); i += 8)
        hash = folded(hash ^ eightBytes(key.data() + i, key.size() - i), factor);
    return std::size_t(folded(hash, seed | 1));
}

char *write(char *to, QByteArrayView bytes) { return std::copy_n(bytes.data(), bytes.size(), to); }

void appendRecord(QByteArray &text, QByteArrayView key, QByteArrayView entry)
{
    const qsizetype start = text.size();
    text.resize(start + key.size() + entry.size() + 2);
    char *at = write(text.data() + start, key);
    *at++ = ',';
    at = write(at, entry);
    *at = '\r';
}

} // namespace

RecordTable::RecordTable(QByteArray text) : m_text(std::move(text))
{
    if (!m_text.isEmpty() && !m_text.endsWith('\r'))
        m_text.append('\r');
    for (qsizetype start = 0; start < m_text.size();) {
        const qsizetype end = m_text.indexOf('\r', start);
        readRecord(start, end);
        start = end + 1;
    }
}

void RecordTable::readRecord(qsizetype start, qsizetype end)
{
    if (start == end) {
        m_isWritable = false;
        return;
    }
    const QByteArrayView record(m_text.constData() + start, end - start);
    const qsizetype comma = record.indexOf(',');
    const qsizetype keySize = comma < 0 ? record.size() : comma;
    const bool sound = comma >= 0 && record.indexOf(',', comma + 1) < 0;
    m_isWritable = m_isWritable && sound;
    put({start, keySize, sound ? record.size() - keySize - 1 : 0, hashOf(record.first(keySize))});
}

void RecordTable::insert(QByteArrayView key, QByteArrayView entry)
{
    const Record record{m_text.size(), key.size(), entry.size(), hashOf(key)};
    appendRecord(m_text, key, entry);
    put(record);
    dropDeadText();
}

/// Enters a record whose text is there already.
void RecordTable::put(const Record &record)
{
    if ((m_records.size() + 1) * 4 > m_slots.size() * 3)
        index(std::max<std::size_t>(16, m_slots.size() * 2));
    quint32 &slot = m_slots[slotOf(keyOf(record), record.hash)];
    if (slot == 0) {
        m_records.push_back(record);
        slot = quint32(m_records.size());
        ++m_count;
    } else {
        m_liveSize -= m_records[slot - 1].size();
        m_records[slot - 1] = record;
        m_isWritable = false;
    }
    m_liveSize += record.size();
}

bool RecordTable::remove(QByteArrayView key)
{
    const std::size_t slot = m_count == 0 ? 0 : slotOf(key, hashOf(key));
    if (m_count == 0 || m_slots[slot] == 0)
        return false;
    Record &record = m_records[m_slots[slot] - 1];
    m_liveSize -= record.size();
    record.keySize = -1;
    --m_count;
    m_isWritable = false;
    dropDeadText();
    return true;
}

std::optional<QByteArrayView> RecordTable::entry(QByteArrayView key) const
{
    if (m_count == 0)
        return {};
    const quint32 number = m_slots[slotOf(key, hashOf(key))];
    return number == 0 ? std::nullopt : std::optional(entryOf(m_records[number - 1]));
}

QByteArray RecordTable::text() const
{
    if (m_isWritable)
        return m_text;
    QByteArray text;
    text.reserve(m_liveSize);
    for (const Record &record : m_records) {
        if (record.isAlive())
            appendRecord(text, keyOf(record), entryOf(record));
    }
    return text;
}

QByteArrayView RecordTable::keyOf(const Record &record) const
{
    return {m_text.constData() + record.start, record.keySize};
}

QByteArrayView RecordTable::entryOf(const Record &record) const
{
    return {m_text.constData() + record.start + record.keySize + 1, record.entrySize};
}

/// The slot of the key's record, or the free one where it would be.
std::size_t RecordTable::slotOf(QByteArrayView key, std::size_t hash) const
{
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
        if (m_slots[slot] == 0)
            return slot;
        const Record &record = m_records[m_slots[slot] - 1];
        if (record.hash == hash && record.isAlive() && keyOf(record) == key)
            return slot;
    }
}

/// \param slotCount a power of two, more than there are records
void RecordTable::index(std::size_t slotCount)
{
    m_slots.assign(slotCount, 0);
    for (std::size_t i = 0; i < m_records.size(); ++i) {
        std::size_t slot = m_records[i].hash & (slotCount - 1);
        while (m_slots[slot] != 0)
            slot = (slot + 1) & (slotCount - 1);
        m_slots[slot] = quint32(i + 1);
    }
}

/// Keeps what replacing and removing leaves behind below what is in use.
void RecordTable::dropDeadText()
{
    constexpr qsizetype Slack = 1024;
    if (m_text.size() <= 2 * m_liveSize + Slack)
        return;
    m_text = text();
    std::erase_if(m_records, [](const Record &record) { return !record.isAlive(); });
    qsizetype start = 0;
    for (Record &record : m_records) {
        record.start = start;
        start += record.size();
    }
    m_isWritable = true;
    index(m_slots.size());
}

} // namespace dravelin::detail
