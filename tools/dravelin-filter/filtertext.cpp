// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "filtertext.h"

#include "imagefiles.h"

#include <dravelin/platform/color.h>

#include <QtCore/QRegularExpression>

using namespace Qt::StringLiterals;
using dravelin::ImageFilter;

namespace {

QString typeOf(const ImageFilter &filter, const QString &key)
{
    for (const dravelin::FilterInput &input : filter.inputs()) {
        if (input.key == key)
            return input.type;
    }
    QStringList keys = filter.inputKeys();
    keys.removeFirst(); // what comes out of the filter before
    throw Failure(u"%1 has no input \"%2\"; it has %3"_s.arg(filter.filterName(), key,
                                                             keys.isEmpty() ? u"none"_s : keys.join(u", "_s)));
}

QVariant numberFrom(const QString &text)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok ? QVariant(number) : throw Failure(u"\"%1\" is no number"_s.arg(text));
}

QVariant colorFrom(const QString &text)
{
    const QColor color(text);
    return color.isValid() ? QVariant(color) : throw Failure(u"\"%1\" is no colour"_s.arg(text));
}

QVariant valueFrom(const QString &text, const QString &type)
{
    if (type == dravelin::kCIAttributeTypeImage)
        return readImage(text);
    return type == dravelin::kCIAttributeTypeColor ? colorFrom(text) : numberFrom(text);
}

void setInput(ImageFilter &filter, const QString &assignment)
{
    const qsizetype sign = assignment.indexOf(u'=');
    if (sign < 0)
        throw Failure(u"\"%1\" is not of the form INPUT=VALUE"_s.arg(assignment));
    const QString key = assignment.first(sign);
    filter.setValue(valueFrom(assignment.sliced(sign + 1), typeOf(filter, key)), key);
}

} // namespace

std::shared_ptr<ImageFilter> filterFromText(const QString &text)
{
    const QString name = text.section(u':', 0, 0), inputs = text.section(u':', 1);
    if (!ImageFilter::filterNamesInCategories().contains(name))
        throw Failure(u"there is no filter \"%1\"; --list shows those that there are"_s.arg(name));
    const auto filter = ImageFilter::filterWithName(name);
    // File names may have commas of their own.
    static const QRegularExpression separator(u",(?=\\w+=)"_s);
    for (const QString &assignment : inputs.split(separator, Qt::SkipEmptyParts))
        setInput(*filter, assignment);
    return filter;
}
