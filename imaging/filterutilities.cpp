// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging/filterutilities.h>

#include <dravelin/platform/log.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

QVariantMap attributesOf(const std::shared_ptr<ImageFilter> &filter, const QString &inputKey)
{
    return filter ? filter->attributes().value(inputKey).toMap() : QVariantMap();
}

int steps(double value)
{
    constexpr double limit = std::numeric_limits<int>::max();
    const double count = std::round(value * FilterSliderSteps);
    return std::isnan(count) ? 0 : int(std::clamp(count, -limit, limit));
}

bool countsSteps(const QObject *slider) { return slider->property("value").typeId() == QMetaType::Int; }

} // namespace

detail::SliderRange detail::sliderRange(const std::shared_ptr<ImageFilter> &filter, const QString &inputKey)
{
    const QVariantMap attributes = attributesOf(filter, inputKey);
    return {attributes.value(kCIAttributeSliderMin).toDouble(), attributes.value(kCIAttributeSliderMax).toDouble(),
            attributes.value(kCIAttributeDefault).toDouble()};
}

inline namespace Utilities {

double getDefaultValue(const std::shared_ptr<ImageFilter> &filter, const QString &inputKey)
{
    return attributesOf(filter, inputKey).value(kCIAttributeDefault).toDouble();
}

void configureSliderWithFilterAttributes(const std::shared_ptr<ImageFilter> &filter, QObject *slider,
                                         const QString &inputKey)
{
    const detail::SliderRange range = detail::sliderRange(filter, inputKey);
    const bool inSteps = slider && countsSteps(slider);
    const auto set = [&](const char *property, double value) {
        return slider && slider->setProperty(property, inSteps ? QVariant(steps(value)) : QVariant(value));
    };
    const bool done[] = {set("minimum", range.minimum), set("maximum", range.maximum), set("value", range.value)};
    if (!std::ranges::all_of(done, std::identity()))
        logWarning(u"The control for \"%1\" has no minimum, maximum and value"_s.arg(inputKey));
}

double filterSliderValue(const QObject *slider)
{
    const double value = slider ? slider->property("value").toDouble() : 0;
    return slider && countsSteps(slider) ? value / FilterSliderSteps : value;
}

} // namespace Utilities

} // namespace dravelin
