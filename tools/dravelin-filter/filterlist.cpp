// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "filterlist.h"

#include <dravelin/platform/color.h>
#include <dravelin/platform/imagefilter.h>

using namespace Qt::StringLiterals;
using dravelin::FilterInput;

namespace {

QString range(const std::optional<double> &minimum, const std::optional<double> &maximum)
{
    if (minimum && maximum)
        return u"%1 to %2"_s.arg(*minimum).arg(*maximum);
    if (minimum)
        return u"%1 or more"_s.arg(*minimum);
    return maximum ? u"%1 or less"_s.arg(*maximum) : u"any number"_s;
}

QString numbers(const FilterInput &input)
{
    const bool isAngle = input.type == dravelin::kCIAttributeTypeAngle;
    const QString unit = isAngle ? u" of radians"_s : input.inPixels ? u" pixels"_s : QString();
    return range(input.minimum, input.maximum) + unit + u", default %1"_s.arg(input.defaultValue.toDouble());
}

QString description(const FilterInput &input)
{
    if (input.type == dravelin::kCIAttributeTypeImage)
        return u"file with a picture"_s;
    if (input.type == dravelin::kCIAttributeTypeColor)
        return u"colour, default %1"_s.arg(input.defaultValue.value<dravelin::Color>().toQColor().name());
    return numbers(input);
}

} // namespace

QString filterList()
{
    QString text;
    for (const QString &name : dravelin::ImageFilter::filterNamesInCategories()) {
        text += name + u'\n';
        const auto filter = dravelin::ImageFilter::filterWithName(name);
        for (const FilterInput &input : filter->inputs())
            text += u"    %1  %2\n"_s.arg(input.key, -20).arg(description(input));
    }
    return text;
}
