// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/dataencoder.h>

#include <dravelin/encoding/base64.h>
#include <dravelin/encoding/compression.h>
#include <dravelin/platform/exception.h>
#include <dravelin/platform/log.h>
#include <dravelin/values/conversions.h>

#include <encoding/recordtable.h>

namespace dravelin {

using namespace Qt::StringLiterals;
using detail::RecordTable;

namespace {

/// Absent and empty keys are the same key.
QByteArray keyBytes(const QString &key) { return key.isEmpty() ? QByteArray("") : strToData(key); }

std::optional<QByteArrayView> find(const RecordTable &table, const QString &key)
{
    const QByteArray bytes = keyBytes(key);
    return bytes.isNull() ? std::nullopt : table.entry(bytes);
}

void warn(const QString &what) { logWarning(u"data encoder: "_s + what); }

/// The records of a blob; nothing when it is none.
QByteArray recordsOf(const QByteArray &blob, qsizetype maximumSize)
{
    const QByteArray stream = decodeBase64FromBytes(blob);
    if (stream.isNull() && !blob.isNull())
        warn(u"%1 bytes are not Base64"_s.arg(blob.size()));
    try {
        const QByteArray records = zlibDecompressed(stream, maximumSize);
        if (records.isValidUtf8())
            return records;
        warn(u"%1 bytes of records are not UTF-8"_s.arg(records.size()));
    } catch (const Exception &exception) {
        warn(exception.reason());
    }
    return {};
}

} // namespace

DataEncoder::DataEncoder() : d(new RecordTable) {}
DataEncoder::DataEncoder(const DataEncoder &other) = default;
DataEncoder &DataEncoder::operator=(const DataEncoder &other) = default;
DataEncoder::~DataEncoder() = default;

DataEncoder DataEncoder::initWithData(const QByteArray &data, qsizetype maximumSize)
{
    DataEncoder encoder;
    encoder.decodeData(data, maximumSize);
    return encoder;
}

QByteArray DataEncoder::encodeData() const
{
    return isEmpty() ? QByteArray("") : encodeBase64ToBytes(zlibCompressed(d.constData()->text()));
}

void DataEncoder::decodeData(const QByteArray &data, qsizetype maximumSize)
{
    d = new RecordTable(recordsOf(data, maximumSize));
}

void DataEncoder::addString(const QString &key, const QString &value)
{
    const QByteArray bytes = strToData(value);
    if (bytes.isEmpty() && !value.isEmpty())
        warn(u"the value of \"%1\" has no UTF-8 form"_s.arg(key));
    add(key, bytes);
}

void DataEncoder::addInteger(const QString &key, qint64 value) { add(key, QByteArray::number(qint32(value))); }

void DataEncoder::addBool(const QString &key, bool value) { add(key, value ? "YES" : "NO"); }

void DataEncoder::add(const QString &key, const QByteArray &value)
{
    const QByteArray bytes = keyBytes(key);
    if (bytes.isNull())
        warn(u"the key \"%1\" has no UTF-8 form"_s.arg(key));
    else if (value.isEmpty())
        d->remove(bytes);
    else
        d->insert(bytes, encodeBase64ToBytes(value));
}

QString DataEncoder::getString(const QString &key) const { return getHandler(key); }

qint64 DataEncoder::getInteger(const QString &key) const { return strToInt(getHandler(key)); }

bool DataEncoder::getBool(const QString &key) const { return strToBool(getHandler(key)); }

QString DataEncoder::getHandler(const QString &key) const
{
    const auto entry = find(*d, key);
    if (!entry)
        return u""_s;
    QString value = dataToStr(decodeBase64FromBytes(*entry));
    if (value.isNull())
        warn(u"the entry of \"%1\" is not Base64 of UTF-8 text"_s.arg(key));
    return value;
}

QString DataEncoder::encodeDataEntry(const QString &value) { return encodeBase64WithString(value); }

QString DataEncoder::decodeDataEntry(const QString &entry) { return decodeBase64ToString(entry); }

QStringList DataEncoder::keys() const
{
    QStringList keys;
    keys.reserve(count());
    d->forEachKey([&keys](QByteArrayView key) { keys.append(QString::fromUtf8(key)); });
    return keys;
}

bool DataEncoder::contains(const QString &key) const { return find(*d, key).has_value(); }

qsizetype DataEncoder::count() const { return d->count(); }

bool DataEncoder::remove(const QString &key) { return contains(key) && d->remove(keyBytes(key)); }

void DataEncoder::clear() { d = new RecordTable; }

} // namespace dravelin
