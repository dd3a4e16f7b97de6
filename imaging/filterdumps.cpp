// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging/filterutilities.h>

#include <dravelin/platform/color.h>

#include <QtCore/QLocale>

#include <algorithm>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

/// In quotation marks unless it is a plain word.
QString quoted(const QString &text)
{
    const bool plain = !text.isEmpty() && std::ranges::all_of(text, [](QChar c) {
        return c.unicode() < 128 && (c.isLetterOrNumber() || c == u'.' || c == u'_');
    });
    if (plain)
        return text;
    QString escaped = text;
    escaped.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
    return u'"' + escaped + u'"';
}

QString numberText(double value) { return QString::number(value, 'g', QLocale::FloatingPointShortest); }

QString plainDescription(const QVariant &value)
{
    if (value.typeId() != qMetaTypeId<Color>())
        return quoted(value.typeId() == QMetaType::Double ? numberText(value.toDouble()) : value.toString());
    const auto color = value.value<Color>();
    QStringList components;
    for (const double component : {color.red(), color.green(), color.blue(), color.alpha()})
        components.append(numberText(component));
    return u"\"(%1)\""_s.arg(components.join(u' '));
}

QString listDescription(const QStringList &list, const QString &indent)
{
    QStringList lines;
    for (const QString &text : list)
        lines.append(indent + u"    "_s + quoted(text));
    return u"(\n"_s + lines.join(u",\n"_s) + u'\n' + indent + u')';
}

QString description(const QVariantMap &map, const QString &indent = {})
{
    QString result = u"{\n"_s;
    const QString deeper = indent + u"    "_s;
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        const QVariant &value = *entry;
        const QString text = value.typeId() == QMetaType::QVariantMap   ? description(value.toMap(), deeper)
                             : value.typeId() == QMetaType::QStringList ? listDescription(value.toStringList(), deeper)
                                                                        : plainDescription(value);
        result += deeper + quoted(entry.key()) + u" = "_s + text + u";\n"_s;
    }
    return result + indent + u'}';
}

} // namespace

inline namespace Utilities {

QStringList getCategoryNames()
{
    return {kCICategoryDistortionEffect,
            kCICategoryGeometryAdjustment,
            kCICategoryCompositeOperation,
            kCICategoryHalftoneEffect,
            kCICategoryColorAdjustment,
            kCICategoryColorEffect,
            kCICategoryTransition,
            kCICategoryTileEffect,
            kCICategoryGenerator,
            kCICategoryReduction,
            kCICategoryGradient,
            kCICategoryStylize,
            kCICategorySharpen,
            kCICategoryBlur,
            kCICategoryVideo,
            kCICategoryStillImage,
            kCICategoryInterlaced,
            kCICategoryNonSquarePixels,
            kCICategoryHighDynamicRange,
            kCICategoryBuiltIn,
            kCICategoryFilterGenerator};
}

QString dumpAllCategoryNames()
{
    QString result;
    for (const QString &category : getCategoryNames())
        result += category + u'\r';
    return result;
}

QString dumpAllFilters()
{
    QString result;
    for (const QString &category : getCategoryNames()) {
        result += category + u'\r';
        for (const QString &filter : ImageFilter::filterNamesInCategory(category))
            result += u"    "_s + filter + u'\r';
        result += u'\r';
    }
    return result;
}

QString dumpAllFiltersWithAttributes()
{
    const QString rule = QString(35, u'-') + u'\r';
    QString result;
    for (const QString &name : ImageFilter::filterNamesInCategories()) {
        const auto filter = ImageFilter::filterWithName(name);
        result += rule + u"Filter: "_s + name + u'\r' + rule;
        result += u"Parameters: "_s + description(filter->attributes()) + u"\r\r"_s;
    }
    return result;
}

} // namespace Utilities

} // namespace dravelin
