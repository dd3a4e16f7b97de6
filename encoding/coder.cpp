// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/coder.h>

#include <dravelin/platform/geometry.h>
#include <dravelin/values/conversions.h>

namespace dravelin {

void Utilities::encodeString(KeyedArchiver &coder, const QString &text, const QString &forKey)
{
    coder.encodeObject(text, forKey);
}

QString Utilities::decodeStringForKey(KeyedUnarchiver &coder, const QString &key)
{
    const QVariant value = coder.decodeObjectForKey(key);
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

void Utilities::encodeRange(KeyedArchiver &coder, Range range, const QString &forKey)
{
    encodeString(coder, NSStringFromRange(range), forKey);
}

Range Utilities::decodeRangeForKey(KeyedUnarchiver &coder, const QString &key)
{
    return NSRangeFromString(decodeStringForKey(coder, key));
}

void Utilities::encodeColor(KeyedArchiver &coder, const Color &color, const QString &forKey)
{
    encodeString(coder, colorToString(color), forKey);
}

Color Utilities::decodeColorForKey(KeyedUnarchiver &coder, const QString &key)
{
    return stringToColor(decodeStringForKey(coder, key));
}

std::unique_ptr<KeyedArchiver> Utilities::createKeyedArchiver() { return std::make_unique<KeyedArchiver>(); }

std::unique_ptr<KeyedUnarchiver> Utilities::createKeyedUnarchiver(const QString &text)
{
    auto unarchiver = std::make_unique<KeyedUnarchiver>(text.toUtf8());
    return unarchiver->isValid() ? std::move(unarchiver) : nullptr;
}

} // namespace dravelin
