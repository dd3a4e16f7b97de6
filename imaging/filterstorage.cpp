// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging/filterprocessor.h>

#include <dravelin/encoding/dataencoder.h>
#include <dravelin/platform/color.h>
#include <dravelin/platform/log.h>

#include <QtCore/QLocale>
#include <QtCore/QUrl>

#include <algorithm>
#include <array>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 MostLevels = 1000;
constexpr qsizetype MostBytes = 16 << 20;

QString numberText(double value) { return QString::number(value, 'g', QLocale::FloatingPointShortest); }

/// The space and the components, exactly; other than RGB colours are as filters see them, in sRGB.
QString colorText(const Color &color)
{
    const QString space = color.space() == Color::CalibratedRGB ? u"calibrated"_s : u"srgb"_s;
    QStringList words{space};
    for (const double component : {color.red(), color.green(), color.blue(), color.alpha()})
        words.append(numberText(component));
    return words.join(u' ');
}

QVariant readNumber(const QString &text)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok ? QVariant(number) : QVariant();
}

QVariant readColor(const QString &text)
{
    const QStringList words = text.split(u' ');
    std::array<double, 4> c{};
    bool ok = words.size() == 5 && (words[0] == "srgb"_L1 || words[0] == "calibrated"_L1);
    for (qsizetype i = 0; ok && i < 4; ++i)
        c[size_t(i)] = words[i + 1].toDouble(&ok);
    if (!ok)
        return {};
    const auto make = words[0] == "srgb"_L1 ? &Color::srgb : &Color::calibratedRgb;
    return QVariant::fromValue(make(c[0], c[1], c[2], c[3]));
}

/// The texts of one entry, under keys that begin with its place in the chain.
struct Entry
{
    DataEncoder &encoder;
    qint64 place;

    [[nodiscard]] QString key(const char *field) const { return u"%1.%2"_s.arg(place).arg(QLatin1String(field)); }

    /// Inputs may have any name; keys must not.
    [[nodiscard]] QString inputKey(const QString &input) const
    {
        return u"%1.input.%2"_s.arg(place).arg(QLatin1String(QUrl::toPercentEncoding(input)));
    }
    [[nodiscard]] QString get(const char *field) const { return encoder.getString(key(field)); }
};

void write(const Entry &entry, const ImageFilter &filter)
{
    for (const FilterInput &input : filter.inputs()) {
        const QVariant value = filter.value(input.key);
        if (!value.isValid() || input.type == kCIAttributeTypeImage)
            continue;
        const bool isColor = input.type == kCIAttributeTypeColor;
        entry.encoder.addString(entry.inputKey(input.key),
                                isColor ? colorText(value.value<Color>()) : numberText(value.toDouble()));
    }
}

void write(const Entry &entry, qint64 level, const FilterItem &item)
{
    entry.encoder.addString(entry.key("filter"), item.filter->filterName());
    entry.encoder.addString(entry.key("name"), item.filter->name());
    entry.encoder.addString(entry.key("level"), QString::number(level));
    entry.encoder.addString(entry.key("index"), QString::number(item.index));
    if (item.hasDefault)
        entry.encoder.addString(entry.key("default"), numberText(item.defaultValue));
    write(entry, *item.filter);
}

/// \return whether all that is there could be read
bool read(const Entry &entry, ImageFilter &filter)
{
    return std::ranges::all_of(filter.inputs(), [&](const FilterInput &input) {
        const QString text = entry.encoder.getString(entry.inputKey(input.key));
        if (text.isEmpty() || input.type == kCIAttributeTypeImage)
            return true;
        const QVariant value = input.type == kCIAttributeTypeColor ? readColor(text) : readNumber(text);
        return value.isValid() && filter.setValue(value, input.key);
    });
}

void readDefault(const Entry &entry, FilterItem &item)
{
    const QVariant value = readNumber(entry.get("default"));
    item.hasDefault = value.isValid();
    item.defaultValue = value.toDouble();
}

/// \return what is wrong with the entry; empty when it has been added
QString read(const Entry &entry, FilterProcessor &processor)
{
    bool isLevel = false, isIndex = false;
    const qint64 level = entry.get("level").toLongLong(&isLevel), index = entry.get("index").toLongLong(&isIndex);
    if (!isLevel || !isIndex || level < 0 || level >= processor.levelCount())
        return u"no level or no index"_s;
    const auto filter = ImageFilter::filterWithName(entry.get("filter"));
    if (!filter)
        return u"an unknown filter"_s;
    filter->setName(entry.get("name"));
    if (!read(entry, *filter))
        return u"a broken value"_s;
    processor.addFilter(filter, level, index);
    for (const auto &item : processor.filterItems(level)) {
        if (item->filter == filter)
            readDefault(entry, *item);
    }
    return {};
}

} // namespace

QByteArray FilterProcessor::encodeChain() const
{
    DataEncoder encoder;
    encoder.addString(u"levels"_s, QString::number(levelCount()));
    qint64 place = 0;
    for (qint64 level = 0; level < levelCount(); ++level) {
        for (const auto &item : filterItems(level))
            write({encoder, place++}, level, *item);
    }
    return encoder.encodeData();
}

std::optional<FilterProcessor> FilterProcessor::decodeChain(const QByteArray &text)
{
    DataEncoder encoder;
    encoder.decodeData(text, MostBytes);
    bool isNumber = false;
    const qint64 levels = encoder.getString(u"levels"_s).toLongLong(&isNumber);
    QString fault = !isNumber || levels < 0 || levels > MostLevels ? u"it has no number of levels"_s : QString();
    FilterProcessor processor(fault.isEmpty() ? levels : 0);
    for (Entry entry{encoder, 0}; fault.isEmpty() && encoder.contains(entry.key("filter")); ++entry.place) {
        if (const QString cause = read(entry, processor); !cause.isEmpty())
            fault = u"entry %1 has %2"_s.arg(entry.place).arg(cause);
    }
    if (fault.isEmpty())
        return processor;
    logWarning(u"The chain of filters is not read: "_s + fault);
    return std::nullopt;
}

} // namespace dravelin
