// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/imagefilter.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <concepts>
#include <memory>

/// \file
/// What is published about filters, for controls and as text.
///
///     const auto sepia = dravelin::sepiaFilter(0.8f);
///     dravelin::configureSliderWithFilterAttributes(sepia, slider, "inputIntensity");
///     connect(slider, &QSlider::valueChanged, this, [=] {
///         sepia->setValue(dravelin::filterSliderValue(slider), "inputIntensity");
///     });

namespace dravelin {

namespace detail {

struct SliderRange
{
    double minimum, maximum, value;
};

[[nodiscard]] DRAVELIN_EXPORT SliderRange sliderRange(const std::shared_ptr<ImageFilter> &filter,
                                                      const QString &inputKey);

} // namespace detail

/// How many steps of a control of whole numbers, such as a QSlider, make 1.
inline constexpr int FilterSliderSteps = 1000;

inline namespace Utilities {

/// \name Inputs
/// @{

/// The published default of an input.
/// \return 0 when it has none, when it is no number, and without a filter
/// \operation{getDefaultValue:}
[[nodiscard]] DRAVELIN_EXPORT double getDefaultValue(const std::shared_ptr<ImageFilter> &filter,
                                                     const QString &inputKey);

/// Sets the properties "minimum", "maximum" and "value" of a control, in that order, to the published slider range and
/// default of an input; all to 0 when there are none. Where "value" is a whole number, as in QSlider and QDial, they are
/// in steps of a thousandth. A QDoubleSpinBox rounds to its decimals, so set them before. A control without such
/// properties is a line in the log.
/// \operation{configureSliderWithFilterAttributes:inputKey:}
DRAVELIN_EXPORT void configureSliderWithFilterAttributes(const std::shared_ptr<ImageFilter> &filter, QObject *slider,
                                                         const QString &inputKey);

/// The same for a control of another kind, which has setMinimum(), setMaximum() and setValue().
template <typename Slider>
requires(!std::derived_from<Slider, QObject>) && requires(Slider &slider)
{
    slider.setMinimum(0.0);
    slider.setMaximum(0.0);
    slider.setValue(0.0);
}
void configureSliderWithFilterAttributes(const std::shared_ptr<ImageFilter> &filter, Slider *slider,
                                         const QString &inputKey)
{
    const detail::SliderRange range = detail::sliderRange(filter, inputKey);
    slider->setMinimum(range.minimum);
    slider->setMaximum(range.maximum);
    slider->setValue(range.value);
}

/// The value for the input of a control that configureSliderWithFilterAttributes() has set up.
[[nodiscard]] DRAVELIN_EXPORT double filterSliderValue(const QObject *slider);
/// @}

/// \name Filters and categories
/// @{

/// The 21 categories of the platform, in its order, from kCICategoryDistortionEffect to kCICategoryFilterGenerator.
/// Most have no filters here.
/// \operation{getCategoryNames}
[[nodiscard]] DRAVELIN_EXPORT QStringList getCategoryNames();

/// Each category followed by a carriage return.
/// \operation{dumpAllCategoryNames}
[[nodiscard]] DRAVELIN_EXPORT QString dumpAllCategoryNames();

/// For each category its line, a line for each of its filters, indented by four blanks, and an empty line. Lines end
/// with carriage returns.
/// \operation{dumpAllFilters}
[[nodiscard]] DRAVELIN_EXPORT QString dumpAllFilters();

/// For each filter its name between two lines of 35 hyphens, then its attributes and an empty line. Lines end with
/// carriage returns; those of the attributes, written as a property list in the old style, with line feeds.
/// \operation{dumpAllFiltersWithAttributes}
[[nodiscard]] DRAVELIN_EXPORT QString dumpAllFiltersWithAttributes();
/// @}

} // namespace Utilities

} // namespace dravelin
