// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/imagefilter.h>

#include "platform/filterrecipe.h"
#include "platform/filterregistry.h"
#include "platform/filtervalue.h"

#include <dravelin/platform/log.h>

#include <algorithm>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

QVariantMap attributesOf(const FilterInput &input)
{
    QVariantMap result{{kCIAttributeClass, detail::filterValueClass(input.type)}, {kCIAttributeType, input.type}};
    if (input.defaultValue.isValid())
        result[kCIAttributeDefault] = input.defaultValue;
    const std::pair<QLatin1String, std::optional<double>> numbers[] = {{kCIAttributeIdentity, input.identity},
                                                                       {kCIAttributeMin, input.minimum},
                                                                       {kCIAttributeMax, input.maximum},
                                                                       {kCIAttributeSliderMin, input.sliderMinimum},
                                                                       {kCIAttributeSliderMax, input.sliderMaximum}};
    for (const auto &[key, number] : numbers) {
        if (number)
            result[key] = *number;
    }
    return result;
}

const FilterInput &mainInput()
{
    static const FilterInput input{.key = kCIInputImageKey, .type = kCIAttributeTypeImage};
    return input;
}

bool isInAll(const QStringList &categories, const detail::FilterKind &kind)
{
    return std::ranges::all_of(categories,
                               [&](const QString &name) { return kind.description.categories.contains(name); });
}

} // namespace

ImageFilter::ImageFilter(std::shared_ptr<const detail::FilterKind> kind)
    : m_kind(std::move(kind)), m_name(m_kind->filterName)
{
    setDefaults();
}

ImageFilter::~ImageFilter() = default;

std::shared_ptr<ImageFilter> ImageFilter::filterWithName(const QString &filterName)
{
    auto kind = detail::filterKinds().value(filterName);
    if (kind)
        return std::shared_ptr<ImageFilter>(new ImageFilter(std::move(kind)));
    logWarning(u"There is no filter named \"%1\""_s.arg(filterName));
    return nullptr;
}

std::shared_ptr<ImageFilter> ImageFilter::copy() const
{
    std::shared_ptr<ImageFilter> result(new ImageFilter(m_kind));
    result->m_name = m_name;
    result->m_values = m_values;
    return result;
}

QString ImageFilter::filterName() const { return m_kind->filterName; }

void ImageFilter::setDefaults()
{
    for (const FilterInput &input : inputs()) {
        if (input.defaultValue.isValid())
            m_values[input.key] = input.defaultValue;
    }
}

bool ImageFilter::setValue(const QVariant &value, const QString &forKey)
{
    const FilterInput *input = forKey == kCIInputImageKey ? &mainInput() : m_kind->input(forKey);
    const auto kept = input ? detail::filterValue(value, input->type) : std::nullopt;
    if (!kept) {
        const QString cause = input ? u"it takes no %1"_s.arg(QLatin1String(value.typeName())) : u"there is none"_s;
        logWarning(u"The input \"%1\" of the filter %2 is not set: %3"_s.arg(forKey, filterName(), cause));
    } else if (kept->isValid()) {
        m_values[forKey] = *kept;
    } else {
        m_values.remove(forKey);
    }
    return kept.has_value();
}

QStringList ImageFilter::inputKeys() const
{
    QStringList keys{kCIInputImageKey};
    for (const FilterInput &input : inputs())
        keys.append(input.key);
    return keys;
}

const QList<FilterInput> &ImageFilter::inputs() const { return m_kind->description.inputs; }

QVariantMap ImageFilter::attributes() const
{
    const FilterDescription &description = m_kind->description;
    QVariantMap result{{kCIAttributeFilterName, filterName()},
                       {kCIAttributeFilterDisplayName, description.displayName},
                       {kCIAttributeFilterCategories, description.categories},
                       {kCIInputImageKey, attributesOf(mainInput())}};
    for (const FilterInput &input : description.inputs)
        result[input.key] = attributesOf(input);
    return result;
}

FilterImage ImageFilter::outputImage() const
{
    const auto recipe = std::make_shared<detail::Recipe>();
    recipe->filter = filterName();
    recipe->kernel = m_kind->kernel;
    for (const FilterInput &input : inputs()) {
        const QVariant value = m_values.value(input.key, input.defaultValue);
        if (value.isValid() && input.type != kCIAttributeTypeImage)
            recipe->values[input.key] = value;
    }
    for (auto value = m_values.begin(); value != m_values.end(); ++value) {
        if (value->typeId() == qMetaTypeId<FilterImage>())
            recipe->images[value.key()] = value->value<FilterImage>().recipe();
    }
    return recipe->images.contains(kCIInputImageKey) ? FilterImage(recipe) : FilterImage();
}

QStringList ImageFilter::filterNamesInCategory(const QString &category)
{
    return filterNamesInCategories(QStringList(category));
}

QStringList ImageFilter::filterNamesInCategories(const QStringList &categories)
{
    QStringList names;
    for (const auto &kind : detail::filterKinds()) {
        if (isInAll(categories, *kind))
            names.append(kind->filterName);
    }
    return names;
}

} // namespace dravelin
