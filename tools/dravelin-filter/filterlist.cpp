// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "filterlist.h"

#include <dravelin/platform/color.h>
#include <dravelin/platform/imagefilter.h>

using namespace Qt::StringLiterals;
using dravelin::FilterInput;

namespace {

QString limit(const std::optional<double> &number) { return number ? QString::number(*number) : u"..."_s; }

QString numbers(const FilterInput &input)
{
    QString text = u"from %1 to %2"_s.arg(limit(input.minimum), limit(input.maximum));
    if (input.type == dravelin::kCIAttributeTypeAngle)
        text += u" radians"_s;
    if (input.inPixels)
        text += u" pixels"_s;
    return text + u", default %1"_s.arg(input.defaultValue.toDouble());
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
