// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/keyedarchiver.h>

#include "platform/archivewriter.h"

namespace dravelin {

class KeyedArchiver::Private : public detail::ArchiveWriter
{
public:
    using ArchiveWriter::ArchiveWriter;
};

KeyedArchiver::KeyedArchiver() : d(std::make_unique<Private>(*this)) {}

KeyedArchiver::~KeyedArchiver() = default;

QByteArray KeyedArchiver::archivedDataWithRootObject(const QVariant &value, QString *error)
{
    KeyedArchiver archiver;
    const auto root = archiver.d->encode(QLatin1String(NSKeyedArchiveRootObjectKey), value);
    if (error)
        *error = archiver.error();
    const bool failed = !archiver.d->isWritten(root) && !archiver.error().isNull();
    return failed ? QByteArray() : archiver.encodedData();
}

void KeyedArchiver::encodeObject(const QVariant &value, const QString &forKey) { d->encode(forKey, value); }

void KeyedArchiver::encodeBool(bool value, const QString &forKey) { d->put(forKey, value); }

void KeyedArchiver::encodeInteger(qint64 value, const QString &forKey) { d->put(forKey, value); }

void KeyedArchiver::encodeDouble(double value, const QString &forKey) { d->put(forKey, value); }

void KeyedArchiver::encodeBytes(const QByteArray &bytes, const QString &forKey)
{
    d->put(forKey, bytes.isNull() ? QByteArray("") : bytes);
}

void KeyedArchiver::finishEncoding() { d->finish(); }

QByteArray KeyedArchiver::encodedData()
{
    d->finish();
    return d->data();
}

QString KeyedArchiver::error() const { return d->error(); }

} // namespace dravelin
