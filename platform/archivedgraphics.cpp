// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/archivedvalues.h"

#include "platform/geometrytext.h"

#include <dravelin/platform/color.h>
#include <dravelin/platform/geometry.h>

#include <algorithm>
#include <limits>

namespace dravelin::detail {

using namespace Qt::StringLiterals;

/// Makes colours of any space from what an archive holds, which is how the colour holds itself.
struct ArchivedColor
{
    static std::optional<QVariantMap> encode(ArchiveWriter &, const QVariant &value)
    {
        const auto color = value.value<Color>();
        if (color.space() == Color::Pattern)
            return {};
        return QVariantMap{{u"space"_s, qlonglong(color.space())},
                           {u"red"_s, color.red()},
                           {u"green"_s, color.green()},
                           {u"blue"_s, color.blue()},
                           {u"alpha"_s, color.alpha()}};
    }

    static QVariant decode(ArchiveReader &, const QVariantMap &fields)
    {
        const qint64 space = integerIn(fields.value(u"space"_s)).value_or(-1);
        if (space < Color::NoSpace || space > Color::CMYK)
            return {};
        const auto component = [&fields](const QString &key) { return realIn(fields.value(key)).value_or(0); };
        return QVariant::fromValue(Color(Color::Space(space), component(u"red"_s), component(u"green"_s),
                                         component(u"blue"_s), component(u"alpha"_s)));
    }

    static QVariant decodeQColor(ArchiveReader &reader, const QVariantMap &fields)
    {
        const QVariant color = decode(reader, fields);
        return color.isValid() ? QVariant(color.value<Color>().toQColor()) : color;
    }
};

namespace {

using Fields = std::optional<QVariantMap>;

/// What a geometry's record calls itself.
enum Special { Point = 1, Size = 2, Rectangle = 3, Extent = 4 };

QString keyOf(Special special)
{
    return special == Point ? u"NS.pointval"_s : special == Size ? u"NS.sizeval"_s : u"NS.rectval"_s;
}

QString textOf(Special special, const QVariant &value)
{
    if (special == Point)
        return NSStringFromPoint(value.toPointF());
    return special == Size ? NSStringFromSize(value.toSizeF()) : NSStringFromRect(value.toRectF());
}

template <Special special>
Fields encodeGeometry(ArchiveWriter &writer, const QVariant &value)
{
    return QVariantMap{{u"NS.special"_s, qlonglong(special)},
                       {keyOf(special), QVariant::fromValue(writer.reference(textOf(special, value)))}};
}

Fields encodeRange(ArchiveWriter &writer, const QVariant &value)
{
    const auto range = value.value<Range>();
    return QVariantMap{{u"NS.special"_s, qlonglong(Extent)},
                       {u"NS.rangeval.location"_s, QVariant::fromValue(writer.reference(range.location))},
                       {u"NS.rangeval.length"_s, QVariant::fromValue(writer.reference(range.length))}};
}

bool isCount(const QVariant &number)
{
    return number.typeId() == QMetaType::ULongLong || integerIn(number).value_or(-1) >= 0;
}

QVariant decodeRange(ArchiveReader &reader, const QVariantMap &fields)
{
    const QVariant location = reader.resolved(fields.value(u"NS.rangeval.location"_s));
    const QVariant length = reader.resolved(fields.value(u"NS.rangeval.length"_s));
    if (!isCount(location) || !isCount(length))
        return {};
    return QVariant::fromValue(Range{location.toULongLong(), length.toULongLong()});
}

QVariant geometryFrom(Special special, const QList<double> &n)
{
    if (special == Rectangle)
        return n.size() == 4 ? QVariant(QRectF(n[0], n[1], n[2], n[3])) : QVariant();
    if (n.size() != 2)
        return {};
    return special == Point ? QVariant(QPointF(n[0], n[1])) : QVariant(QSizeF(n[0], n[1]));
}

QList<double> numbersOf(ArchiveReader &reader, const QVariantMap &fields, Special special)
{
    return geometryNumbers(reader.resolved(fields.value(keyOf(special))).toString());
}

QVariant decodeGeometry(ArchiveReader &reader, const QVariantMap &fields)
{
    const qint64 special = integerIn(fields.value(u"NS.special"_s)).value_or(0);
    if (special < Point || special > Extent)
        return {};
    return special == Extent ? decodeRange(reader, fields)
                             : geometryFrom(Special(special), numbersOf(reader, fields, Special(special)));
}

/// A geometry of whole numbers, when these fit an int.
template <Special special, class Whole>
QVariant decodeWhole(ArchiveReader &reader, const QVariantMap &fields)
{
    using Limits = std::numeric_limits<int>;
    const QList<double> numbers = numbersOf(reader, fields, special);
    const bool fit = std::all_of(numbers.cbegin(), numbers.cend(),
                                 [](double n) { return n >= Limits::min() && n <= Limits::max(); });
    const QVariant geometry = fit ? geometryFrom(special, numbers) : QVariant();
    if (!geometry.isValid())
        return {};
    if constexpr (special == Rectangle) // QRectF::toRect() rounds both corners
        return Whole(int(numbers[0]), int(numbers[1]), int(numbers[2]), int(numbers[3]));
    else
        return Whole(int(numbers[0]), int(numbers[1]));
}

} // namespace

const std::vector<ValueClass> &graphicsValueClasses()
{
    const auto type = [](int id) { return QMetaType(id); };
    static const std::vector<ValueClass> classes{
        {type(QMetaType::QPointF), "NSValue", nullptr, encodeGeometry<Point>, decodeGeometry},
        {type(QMetaType::QSizeF), "NSValue", nullptr, encodeGeometry<Size>, decodeGeometry},
        {type(QMetaType::QRectF), "NSValue", nullptr, encodeGeometry<Rectangle>, decodeGeometry},
        {type(QMetaType::QPoint), "QPoint", "NSValue", encodeGeometry<Point>, decodeWhole<Point, QPoint>},
        {type(QMetaType::QSize), "QSize", "NSValue", encodeGeometry<Size>, decodeWhole<Size, QSize>},
        {type(QMetaType::QRect), "QRect", "NSValue", encodeGeometry<Rectangle>, decodeWhole<Rectangle, QRect>},
        {QMetaType::fromType<Range>(), "NSValue", nullptr, encodeRange, decodeGeometry},
        {QMetaType::fromType<Color>(), "dravelin::Color", nullptr, ArchivedColor::encode, ArchivedColor::decode},
        {type(QMetaType::QColor), "QColor", "dravelin::Color", ArchivedColor::encode, ArchivedColor::decodeQColor},
    };
    return classes;
}

} // namespace dravelin::detail
