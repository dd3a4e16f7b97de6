// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/color.h>
#include <dravelin/platform/export.h>
#include <dravelin/platform/imagefilter.h>

#include <memory>

/// \file
/// Filters ready for a chain, each under a display name of its own: filters of one kind and different display names, such
/// as "Saturation" and "Brightness", go together in a FilterProcessor; a second one of the same display name replaces the
/// first.
///
///     chain.addFilter(dravelin::exposureFilter(0.3f), 0, 1);
///     chain.addFilter(dravelin::sepiaFilter(0.8f), 0, 2);
///
/// Every function returns a new filter. Numbers are kept in single precision as they are; inputs that no parameter names
/// have their defaults. A null picture leaves the input without one. The input image is set by the processor, except by
/// falseColorFilter() and blendWithMaskFilter().
///
/// Some functions exist in two forms, of which one takes an object in front that it does not use: anything will do.

namespace dravelin {

/// An argument that is not used. Made of anything.
struct UnusedArgument
{
    template <typename T>
    constexpr UnusedArgument(const T &) noexcept // NOLINT(google-explicit-constructor): made of anything
    {}
};

/// A filter by the platform's name of its kind.
/// \return null, with a line in the log, when there is no such filter
/// \operation{createCIFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> createCIFilter(const QString &platformName,
                                                                          const QString &displayName);
[[nodiscard]] inline std::shared_ptr<ImageFilter> createCIFilter(UnusedArgument, const QString &platformName,
                                                                 const QString &displayName)
{
    return createCIFilter(platformName, displayName);
}

/// \name Tone
/// @{

/// "Sepia Tone".
/// \param intensity 0 for the picture as it is, to 1
/// \operation{sepiaFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> sepiaFilter(float intensity);

/// "Vignette": darker towards the corners.
/// \param intensity -1 to 1; 0 for the picture as it is, below that it gets lighter
/// \param radius 0 to 2
/// \operation{vignetteFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> vignetteFilter(float intensity, float radius);

/// "Color": all three inputs of the colour controls.
/// \param saturation 0 for grey, 1 for the picture as it is, and above
/// \param brightness -1 to 1, added; 0 for the picture as it is
/// \param contrast 0 for a flat grey, 1 for the picture as it is, and above
/// \operation{saturationBrightnessContrastFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter>
saturationBrightnessContrastFilter(float saturation, float brightness, float contrast);
/// "Saturation".
/// \param saturation as in saturationBrightnessContrastFilter()
/// \operation{saturationFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> saturationFilter(float saturation);

/// "Brightness".
/// \param brightness as in saturationBrightnessContrastFilter()
/// \operation{brightnessFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> brightnessFilter(float brightness);

/// "Contrast".
/// \param contrast as in saturationBrightnessContrastFilter()
/// \operation{contrastFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> contrastFilter(float contrast);

/// "Exposure".
/// \param exposureValue in stops: every 1 doubles the light
/// \operation{exposureFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> exposureFilter(float exposureValue);

/// "Hue": turns all colours about the grey axis.
/// \param angle in degrees; the filter keeps radians
/// \operation{hueFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> hueFilter(float angle);

/// "Vibrance": saturates, dull colours more than vivid ones.
/// \param amount -1 to 1; 0 for the picture as it is
/// \operation{vibranceFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> vibranceFilter(float amount);

/// "Shadows": lightens or darkens the dark parts.
/// \param shadowAmount -1 to 1; 0 for the picture as it is
/// \operation{shadowsFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> shadowsFilter(float shadowAmount);

/// "Color Invert".
/// \operation{colorInvertFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> colorInvertFilter();

/// "False Color": shades from one colour, for black, to the other, for white.
/// \operation{falseColorFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> falseColorFilter(const FilterImage &image,
                                                                            const Color &color0, const Color &color1);
[[nodiscard]] inline std::shared_ptr<ImageFilter> falseColorFilter(UnusedArgument, const FilterImage &image,
                                                                   const Color &color0, const Color &color1)
{
    return falseColorFilter(image, color0, color1);
}
/// @}

/// \name Looks
/// @{

/// "Color Diminished", the photo effect "Fade".
/// \operation{colorDiminishedFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> colorDiminishedFilter();

/// "Color Exaggerated", the photo effect "Chrome".
/// \operation{colorExaggeratedFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> colorExaggeratedFilter();

/// "Color Distorted", the photo effect "Instant".
/// \operation{colorDistortedFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> colorDistortedFilter();

/// "Color Cool", the photo effect "Process".
/// \operation{colorCoolFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> colorCoolFilter();

/// "Color Warm", the photo effect "Transfer".
/// \operation{colorWarmFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> colorWarmFilter();

/// "Black and White", the photo effect "Tonal".
/// \operation{blackAndWhiteFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> blackAndWhiteFilter();

/// "Black and White Diminished", the photo effect "Mono".
/// \operation{blackAndWhiteDiminishedFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> blackAndWhiteDiminishedFilter();

/// "Black and White Exaggerated", the photo effect "Noir".
/// \operation{blackAndWhiteExaggeratedFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> blackAndWhiteExaggeratedFilter();
/// @}

/// \name Two pictures
/// @{

/// "Dissolve Transition": from the picture to the target.
/// \param time 0 for the picture, to 1 for the target
/// \operation{dissolveTransitionFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> dissolveTransitionFilter(const FilterImage &targetImage,
                                                                                    float time);
[[nodiscard]] inline std::shared_ptr<ImageFilter> dissolveTransitionFilter(UnusedArgument,
                                                                           const FilterImage &targetImage, float time)
{
    return dissolveTransitionFilter(targetImage, time);
}

/// "Blend with Mask": the picture where the mask is white, the background where it is black.
/// \operation{blendWithMaskFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter>
blendWithMaskFilter(const FilterImage &image, const FilterImage &backgroundImage, const FilterImage &maskImage);
[[nodiscard]] inline std::shared_ptr<ImageFilter> blendWithMaskFilter(UnusedArgument, const FilterImage &image,
                                                                      const FilterImage &backgroundImage,
                                                                      const FilterImage &maskImage)
{
    return blendWithMaskFilter(image, backgroundImage, maskImage);
}

/// "Color Blend": hue and saturation of the picture, luminosity of the background.
/// \operation{colorBlendFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> colorBlendFilter(const FilterImage &backgroundImage);
[[nodiscard]] inline std::shared_ptr<ImageFilter> colorBlendFilter(UnusedArgument, const FilterImage &backgroundImage)
{
    return colorBlendFilter(backgroundImage);
}

/// "Color Multiply Blend": the two multiplied.
/// \operation{colorMultiplyBlendFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> colorMultiplyBlendFilter(const FilterImage &backgroundImage);
[[nodiscard]] inline std::shared_ptr<ImageFilter> colorMultiplyBlendFilter(UnusedArgument,
                                                                           const FilterImage &backgroundImage)
{
    return colorMultiplyBlendFilter(backgroundImage);
}

/// "Hue Blend": hue of the picture, saturation and luminosity of the background.
/// \operation{hueBlendFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> hueBlendFilter(const FilterImage &backgroundImage);
[[nodiscard]] inline std::shared_ptr<ImageFilter> hueBlendFilter(UnusedArgument, const FilterImage &backgroundImage)
{
    return hueBlendFilter(backgroundImage);
}

/// "Luminosity Blend": luminosity of the picture, hue and saturation of the background.
/// \operation{luminosityBlendFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> luminosityBlendFilter(const FilterImage &backgroundImage);
[[nodiscard]] inline std::shared_ptr<ImageFilter> luminosityBlendFilter(UnusedArgument,
                                                                        const FilterImage &backgroundImage)
{
    return luminosityBlendFilter(backgroundImage);
}

/// "Saturation Blend": saturation of the picture, hue and luminosity of the background.
/// \operation{saturationBlendFilter}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<ImageFilter> saturationBlendFilter(const FilterImage &backgroundImage);
[[nodiscard]] inline std::shared_ptr<ImageFilter> saturationBlendFilter(UnusedArgument,
                                                                        const FilterImage &backgroundImage)
{
    return saturationBlendFilter(backgroundImage);
}
/// @}

} // namespace dravelin
