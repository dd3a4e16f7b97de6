// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/keyedunarchiver.h>

#include "platform/archivereader.h"
#include "platform/codingregistry.h"

#include <dravelin/platform/log.h>

#include <limits>
#include <utility>

namespace dravelin {

using namespace Qt::StringLiterals;

class KeyedUnarchiver::Private : public detail::ArchiveReader
{
public:
    using ArchiveReader::ArchiveReader;

    template <class Wanted>
    QVariant decodeAs(const QString &key, Wanted isWanted, const char *kind);
};

namespace {

bool isInteger(const QVariant &value)
{
    return value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::ULongLong;
}

bool isNumber(const QVariant &value)
{
    return isInteger(value) || value.typeId() == QMetaType::Bool || value.typeId() == QMetaType::Double;
}

/// Whether the number, without its fraction, fits 64 bits. The bounds are exact as doubles.
bool fitsInteger(const QVariant &value)
{
    if (value.typeId() == QMetaType::ULongLong)
        return value.toULongLong() <= quint64(std::numeric_limits<qint64>::max());
    const double number = value.toDouble();
    return value.typeId() != QMetaType::Double || (number >= -0x1p63 && number < 0x1p63);
}

qint64 integerOf(const QVariant &value)
{
    return value.typeId() == QMetaType::Double ? qint64(value.toDouble()) : value.toLongLong();
}

} // namespace

/// Absent without a line in the log only when there is nothing under the key.
template <class Wanted>
QVariant KeyedUnarchiver::Private::decodeAs(const QString &key, Wanted isWanted, const char *kind)
{
    const QVariant value = decode(key);
    if (!value.isValid() || isWanted(value))
        return value;
    return failed(u"what key \"%1\" holds is no %2"_s.arg(key, QLatin1StringView(kind)));
}

KeyedUnarchiver::KeyedUnarchiver(const QByteArray &data) : d(std::make_unique<Private>(*this, data)) {}

KeyedUnarchiver::~KeyedUnarchiver() = default;

QVariant KeyedUnarchiver::unarchiveObjectWithData(const QByteArray &data, QString *error)
{
    KeyedUnarchiver unarchiver(data);
    QVariant result = unarchiver.decodeRootObject();
    if (error)
        *error = unarchiver.error();
    return result;
}

bool KeyedUnarchiver::isValid() const { return d->isValid(); }

QString KeyedUnarchiver::error() const { return d->error(); }

bool KeyedUnarchiver::containsValueForKey(const QString &key) const { return d->field(key).isValid(); }

QVariant KeyedUnarchiver::decodeObjectForKey(const QString &key) { return d->decode(key); }

bool KeyedUnarchiver::decodeBoolForKey(const QString &key)
{
    return d->decodeAs(key, isNumber, "truth value").toBool();
}

qint32 KeyedUnarchiver::decodeInt32ForKey(const QString &key)
{
    const auto fits = [](const QVariant &value) {
        return isNumber(value) && fitsInteger(value) && integerOf(value) == qint32(integerOf(value));
    };
    return qint32(integerOf(d->decodeAs(key, fits, "32-bit integer")));
}

qint64 KeyedUnarchiver::decodeIntegerForKey(const QString &key)
{
    const auto fits = [](const QVariant &value) { return isNumber(value) && fitsInteger(value); };
    return integerOf(d->decodeAs(key, fits, "64-bit integer"));
}

double KeyedUnarchiver::decodeDoubleForKey(const QString &key)
{
    return d->decodeAs(key, isNumber, "number").toDouble();
}

QByteArray KeyedUnarchiver::decodeBytesForKey(const QString &key)
{
    const auto isBytes = [](const QVariant &value) { return value.typeId() == QMetaType::QByteArray; };
    return d->decodeAs(key, isBytes, "data").toByteArray();
}

void KeyedUnarchiver::finishDecoding() { d->finish(); }

void KeyedUnarchiver::reportOtherClass(const QVariant &value, const std::type_info &expected)
{
    logWarning(u"KeyedUnarchiver: an object of another class than %1, or a plain value of type %2"_s.arg(
        detail::codingClassName(expected), QLatin1StringView(value.typeName())));
}

} // namespace dravelin
