// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/filtervalue.h"

#include "platform/numbertypes.h"

#include <dravelin/platform/color.h>
#include <dravelin/platform/filterimage.h>
#include <dravelin/platform/filterkeys.h>

#include <QtGui/QPixmap>

namespace dravelin::detail {

using namespace Qt::StringLiterals;

namespace {

std::optional<QVariant> colorValue(const QVariant &value)
{
    const bool known = value.typeId() == qMetaTypeId<Color>() || value.typeId() == QMetaType::QColor;
    const auto color = known ? value.value<Color>() : Color();
    if (!known || color.space() == Color::Pattern)
        return {};
    return color.isValid() ? QVariant::fromValue(color) : QVariant();
}

QVariant fromImage(const FilterImage &image) { return image.isNull() ? QVariant() : QVariant::fromValue(image); }

std::optional<QVariant> imageValue(const QVariant &value)
{
    if (value.typeId() == qMetaTypeId<FilterImage>())
        return fromImage(value.value<FilterImage>());
    if (value.typeId() == QMetaType::QImage)
        return fromImage(value.value<QImage>());
    if (value.typeId() == QMetaType::QPixmap)
        return fromImage(value.value<QPixmap>().toImage());
    return {};
}

} // namespace

std::optional<QVariant> filterValue(const QVariant &value, const QString &type)
{
    if (!value.isValid() || value.typeId() == QMetaType::Nullptr)
        return QVariant();
    if (type == kCIAttributeTypeColor)
        return colorValue(value);
    if (type == kCIAttributeTypeImage)
        return imageValue(value);
    return isNumberType(value.metaType()) ? std::optional(value) : std::nullopt;
}

QString filterValueClass(const QString &type)
{
    if (type == kCIAttributeTypeColor)
        return u"CIColor"_s;
    return type == kCIAttributeTypeImage ? u"CIImage"_s : u"NSNumber"_s;
}

} // namespace dravelin::detail
