// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging/filtercatalogue.h>

#include <initializer_list>
#include <utility>

namespace dravelin {

namespace {

using Inputs = std::initializer_list<std::pair<const char *, QVariant>>;

std::shared_ptr<ImageFilter> make(const char *platformName, const char *displayName, Inputs inputs = {})
{
    const auto filter = createCIFilter(QString::fromLatin1(platformName), QString::fromLatin1(displayName));
    for (const auto &[key, value] : inputs)
        filter->setValue(value, QString::fromLatin1(key));
    return filter;
}

std::shared_ptr<ImageFilter> makeBlend(const char *platformName, const char *displayName, const FilterImage &background)
{
    return make(platformName, displayName, {{"inputBackgroundImage", QVariant::fromValue(background)}});
}

} // namespace

std::shared_ptr<ImageFilter> createCIFilter(const QString &platformName, const QString &displayName)
{
    auto filter = ImageFilter::filterWithName(platformName);
    if (filter)
        filter->setName(displayName);
    return filter;
}

std::shared_ptr<ImageFilter> sepiaFilter(float intensity)
{
    return make("CISepiaTone", "Sepia Tone", {{"inputIntensity", intensity}});
}

std::shared_ptr<ImageFilter> vignetteFilter(float intensity, float radius)
{
    return make("CIVignette", "Vignette", {{"inputIntensity", intensity}, {"inputRadius", radius}});
}

std::shared_ptr<ImageFilter> saturationBrightnessContrastFilter(float saturation, float brightness, float contrast)
{
    return make("CIColorControls", "Color",
                {{"inputSaturation", saturation}, {"inputBrightness", brightness}, {"inputContrast", contrast}});
}

std::shared_ptr<ImageFilter> saturationFilter(float saturation)
{
    return make("CIColorControls", "Saturation", {{"inputSaturation", saturation}});
}

std::shared_ptr<ImageFilter> brightnessFilter(float brightness)
{
    return make("CIColorControls", "Brightness", {{"inputBrightness", brightness}});
}

std::shared_ptr<ImageFilter> contrastFilter(float contrast)
{
    return make("CIColorControls", "Contrast", {{"inputContrast", contrast}});
}

std::shared_ptr<ImageFilter> exposureFilter(float exposureValue)
{
    return make("CIExposureAdjust", "Exposure", {{"inputEV", exposureValue}});
}

std::shared_ptr<ImageFilter> hueFilter(float angle)
{
    // Rounded once: a product in single precision would be off by up to a unit in the last place.
    return make("CIHueAdjust", "Hue", {{"inputAngle", float(double(angle) * 0.017453292519943295)}});
}

std::shared_ptr<ImageFilter> vibranceFilter(float amount)
{
    return make("CIVibrance", "Vibrance", {{"inputAmount", amount}});
}

std::shared_ptr<ImageFilter> shadowsFilter(float shadowAmount)
{
    return make("CIHighlightShadowAdjust", "Shadows", {{"inputShadowAmount", shadowAmount}});
}

std::shared_ptr<ImageFilter> colorInvertFilter() { return make("CIColorInvert", "Color Invert"); }

std::shared_ptr<ImageFilter> falseColorFilter(const FilterImage &image, const Color &color0, const Color &color1)
{
    return make("CIFalseColor", "False Color",
                {{"inputImage", QVariant::fromValue(image)},
                 {"inputColor0", QVariant::fromValue(color0)},
                 {"inputColor1", QVariant::fromValue(color1)}});
}

std::shared_ptr<ImageFilter> colorDiminishedFilter() { return make("CIPhotoEffectFade", "Color Diminished"); }
std::shared_ptr<ImageFilter> colorExaggeratedFilter() { return make("CIPhotoEffectChrome", "Color Exaggerated"); }
std::shared_ptr<ImageFilter> colorDistortedFilter() { return make("CIPhotoEffectInstant", "Color Distorted"); }
std::shared_ptr<ImageFilter> colorCoolFilter() { return make("CIPhotoEffectProcess", "Color Cool"); }
std::shared_ptr<ImageFilter> colorWarmFilter() { return make("CIPhotoEffectTransfer", "Color Warm"); }
std::shared_ptr<ImageFilter> blackAndWhiteFilter() { return make("CIPhotoEffectTonal", "Black and White"); }

std::shared_ptr<ImageFilter> blackAndWhiteDiminishedFilter()
{
    return make("CIPhotoEffectMono", "Black and White Diminished");
}

std::shared_ptr<ImageFilter> blackAndWhiteExaggeratedFilter()
{
    return make("CIPhotoEffectNoir", "Black and White Exaggerated");
}

std::shared_ptr<ImageFilter> dissolveTransitionFilter(const FilterImage &targetImage, float time)
{
    return make("CIDissolveTransition", "Dissolve Transition",
                {{"inputTargetImage", QVariant::fromValue(targetImage)}, {"inputTime", time}});
}

std::shared_ptr<ImageFilter> blendWithMaskFilter(const FilterImage &image, const FilterImage &backgroundImage,
                                                 const FilterImage &maskImage)
{
    return make("CIBlendWithMask", "Blend with Mask",
                {{"inputImage", QVariant::fromValue(image)},
                 {"inputBackgroundImage", QVariant::fromValue(backgroundImage)},
                 {"inputMaskImage", QVariant::fromValue(maskImage)}});
}

std::shared_ptr<ImageFilter> colorBlendFilter(const FilterImage &backgroundImage)
{
    return makeBlend("CIColorBlendMode", "Color Blend", backgroundImage);
}

std::shared_ptr<ImageFilter> colorMultiplyBlendFilter(const FilterImage &backgroundImage)
{
    return makeBlend("CIMultiplyBlendMode", "Color Multiply Blend", backgroundImage);
}

std::shared_ptr<ImageFilter> hueBlendFilter(const FilterImage &backgroundImage)
{
    return makeBlend("CIHueBlendMode", "Hue Blend", backgroundImage);
}

std::shared_ptr<ImageFilter> luminosityBlendFilter(const FilterImage &backgroundImage)
{
    return makeBlend("CILuminosityBlendMode", "Luminosity Blend", backgroundImage);
}

std::shared_ptr<ImageFilter> saturationBlendFilter(const FilterImage &backgroundImage)
{
    return makeBlend("CISaturationBlendMode", "Saturation Blend", backgroundImage);
}

} // namespace dravelin
