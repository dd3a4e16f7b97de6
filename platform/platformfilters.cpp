// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/filterregistry.h"

#include <dravelin/platform/color.h>

#include <numbers>

namespace dravelin::detail {

namespace {

constexpr auto None = std::nullopt;

/// Where a filter belongs beside the categories that hold all of the platform's.
enum Suitability {
    Everywhere,   ///< interlaced pictures, and pixels that are not square
    SquarePixels, ///< interlaced pictures
    Progressive,  ///< neither
};

QStringList categories(QLatin1String own, Suitability suitability)
{
    QStringList result{own, kCICategoryVideo, kCICategoryStillImage, kCICategoryBuiltIn};
    if (suitability != Progressive)
        result.append(kCICategoryInterlaced);
    if (suitability == Everywhere)
        result.append(kCICategoryNonSquarePixels);
    return result;
}

/// A table of the kinds, filled row by row.
struct Table
{
    FilterKinds kinds = {};

    void add(const char *name, const char *displayName, QLatin1String category, Suitability suitability,
             const QList<FilterInput> &inputs = {})
    {
        const auto filterName = QString::fromLatin1(name);
        FilterDescription description{.displayName = QString::fromLatin1(displayName),
                                      .categories = categories(category, suitability),
                                      .inputs = inputs};
        kinds[filterName] = std::make_shared<FilterKind>(FilterKind{filterName, std::move(description), nullptr});
    }
};

FilterInput image(QLatin1String key) { return {.key = key, .type = kCIAttributeTypeImage}; }

FilterInput color(const char *key, const Color &defaultValue)
{
    return {.key = QString::fromLatin1(key),
            .type = kCIAttributeTypeColor,
            .defaultValue = QVariant::fromValue(defaultValue)};
}

using Limit = std::optional<double>;

FilterInput number(const char *key, double defaultValue, Limit identity, Limit minimum, Limit maximum,
                   double sliderMinimum, double sliderMaximum)
{
    return {.key = QString::fromLatin1(key),
            .defaultValue = defaultValue,
            .identity = identity,
            .minimum = minimum,
            .maximum = maximum,
            .sliderMinimum = sliderMinimum,
            .sliderMaximum = sliderMaximum};
}

FilterInput ofType(QLatin1String type, FilterInput input)
{
    input.type = type;
    return input;
}

FilterInput inPixels(FilterInput input)
{
    input.inPixels = true;
    return input;
}

void addEffects(Table &table)
{
    const auto add = [&](const char *name, const char *displayName, const QList<FilterInput> &inputs = {}) {
        table.add(name, displayName, kCICategoryColorEffect, Everywhere, inputs);
    };
    add("CIColorInvert", "Color Invert");
    add("CIFalseColor", "False Color",
        {color("inputColor0", Color::srgb(0.3, 0, 0)), color("inputColor1", Color::srgb(1, 0.9, 0.8))});
    add("CIPhotoEffectChrome", "Photo Effect Chrome");
    add("CIPhotoEffectFade", "Photo Effect Fade");
    add("CIPhotoEffectInstant", "Photo Effect Instant");
    add("CIPhotoEffectMono", "Photo Effect Mono");
    add("CIPhotoEffectNoir", "Photo Effect Noir");
    add("CIPhotoEffectProcess", "Photo Effect Process");
    add("CIPhotoEffectTonal", "Photo Effect Tonal");
    add("CIPhotoEffectTransfer", "Photo Effect Transfer");
    add("CISepiaTone", "Sepia Tone", {number("inputIntensity", 1, 0, 0, None, 0, 1)});
    table.add("CIVignette", "Vignette", kCICategoryColorEffect, SquarePixels,
              {number("inputRadius", 1, None, 0, 2, 0, 2), number("inputIntensity", 0, 0, -1, 1, -1, 1)});
}

void addAdjustments(Table &table)
{
    const auto add = [&](const char *name, const char *displayName, const QList<FilterInput> &inputs) {
        table.add(name, displayName, kCICategoryColorAdjustment, Everywhere, inputs);
    };
    constexpr double pi = std::numbers::pi;
    add("CIColorControls", "Color Controls",
        {number("inputSaturation", 1, 1, 0, None, 0, 2), number("inputBrightness", 0, 0, -1, None, -1, 1),
         number("inputContrast", 1, 1, 0, None, 0.25, 4)});
    add("CIExposureAdjust", "Exposure Adjust", {number("inputEV", 0, 0, None, None, -10, 10)});
    add("CIHueAdjust", "Hue Adjust", {ofType(kCIAttributeTypeAngle, number("inputAngle", 0, 0, None, None, -pi, pi))});
    add("CIVibrance", "Vibrance", {number("inputAmount", 0, 0, -1, 1, -1, 1)});
}

void addBlends(Table &table)
{
    const auto add = [&](const char *name, const char *displayName) {
        table.add(name, displayName, kCICategoryCompositeOperation, Everywhere, {image(kCIInputBackgroundImageKey)});
    };
    add("CIColorBlendMode", "Color Blend Mode");
    add("CIHueBlendMode", "Hue Blend Mode");
    add("CILuminosityBlendMode", "Luminosity Blend Mode");
    add("CIMultiplyBlendMode", "Multiply Blend Mode");
    add("CISaturationBlendMode", "Saturation Blend Mode");
}

void addTransitionsAndStyles(Table &table)
{
    table.add("CIDissolveTransition", "Dissolve", kCICategoryTransition, Everywhere,
              {image(kCIInputTargetImageKey), ofType(kCIAttributeTypeTime, number("inputTime", 0, 0, 0, 1, 0, 1))});
    table.add("CIBlendWithMask", "Blend With Mask", kCICategoryStylize, Progressive,
              {image(kCIInputBackgroundImageKey), image(kCIInputMaskImageKey)});
    table.add("CIHighlightShadowAdjust", "Highlight and Shadow Adjust", kCICategoryStylize, Progressive,
              {number("inputHighlightAmount", 1, 1, 0, 1, 0.3, 1), number("inputShadowAmount", 0, 0, -1, 1, -1, 1),
               inPixels(number("inputRadius", 0, 0, 0, None, 0, 10))});
}

} // namespace

FilterKinds platformFilters()
{
    Table table;
    addEffects(table);
    addAdjustments(table);
    addBlends(table);
    addTransitionsAndStyles(table);
    return table.kinds;
}

} // namespace dravelin::detail
