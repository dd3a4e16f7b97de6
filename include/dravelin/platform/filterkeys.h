// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QLatin1String>

/// \file
/// The platform's names for the inputs of filters, for what is published about them, and for the categories of filters.

namespace dravelin {

/// \name Inputs of filters
/// @{
inline constexpr QLatin1String kCIInputImageKey("inputImage");
inline constexpr QLatin1String kCIInputBackgroundImageKey("inputBackgroundImage");
inline constexpr QLatin1String kCIInputMaskImageKey("inputMaskImage");
inline constexpr QLatin1String kCIInputTargetImageKey("inputTargetImage");
inline constexpr QLatin1String kCIInputTimeKey("inputTime");
inline constexpr QLatin1String kCIInputRadiusKey("inputRadius");
inline constexpr QLatin1String kCIInputIntensityKey("inputIntensity");
inline constexpr QLatin1String kCIInputSaturationKey("inputSaturation");
inline constexpr QLatin1String kCIInputBrightnessKey("inputBrightness");
inline constexpr QLatin1String kCIInputContrastKey("inputContrast");
inline constexpr QLatin1String kCIInputEVKey("inputEV");
inline constexpr QLatin1String kCIInputAngleKey("inputAngle");
/// @}

/// \name Attributes of a filter
/// @{
inline constexpr QLatin1String kCIAttributeFilterName("CIAttributeFilterName");
inline constexpr QLatin1String kCIAttributeFilterDisplayName("CIAttributeFilterDisplayName");
inline constexpr QLatin1String kCIAttributeFilterCategories("CIAttributeFilterCategories");
/// @}

/// \name Attributes of an input
/// @{
inline constexpr QLatin1String kCIAttributeClass("CIAttributeClass"); ///< "NSNumber", "CIColor" or "CIImage"
inline constexpr QLatin1String kCIAttributeType("CIAttributeType");   ///< one of the types below
inline constexpr QLatin1String kCIAttributeDefault("CIAttributeDefault");
inline constexpr QLatin1String kCIAttributeIdentity("CIAttributeIdentity"); ///< changes nothing
inline constexpr QLatin1String kCIAttributeMin("CIAttributeMin");
inline constexpr QLatin1String kCIAttributeMax("CIAttributeMax");
inline constexpr QLatin1String kCIAttributeSliderMin("CIAttributeSliderMin");
inline constexpr QLatin1String kCIAttributeSliderMax("CIAttributeSliderMax");
/// @}

/// \name Types of inputs
/// @{
inline constexpr QLatin1String kCIAttributeTypeScalar("CIAttributeTypeScalar");
inline constexpr QLatin1String kCIAttributeTypeTime("CIAttributeTypeTime");   ///< from 0 to 1 over a transition
inline constexpr QLatin1String kCIAttributeTypeAngle("CIAttributeTypeAngle"); ///< in radians
inline constexpr QLatin1String kCIAttributeTypeColor("CIAttributeTypeColor");
inline constexpr QLatin1String kCIAttributeTypeImage("CIAttributeTypeImage");
/// @}

/// \name Categories
/// @{
inline constexpr QLatin1String kCICategoryDistortionEffect("CICategoryDistortionEffect");
inline constexpr QLatin1String kCICategoryGeometryAdjustment("CICategoryGeometryAdjustment");
inline constexpr QLatin1String kCICategoryCompositeOperation("CICategoryCompositeOperation");
inline constexpr QLatin1String kCICategoryHalftoneEffect("CICategoryHalftoneEffect");
inline constexpr QLatin1String kCICategoryColorAdjustment("CICategoryColorAdjustment");
inline constexpr QLatin1String kCICategoryColorEffect("CICategoryColorEffect");
inline constexpr QLatin1String kCICategoryTransition("CICategoryTransition");
inline constexpr QLatin1String kCICategoryTileEffect("CICategoryTileEffect");
inline constexpr QLatin1String kCICategoryGenerator("CICategoryGenerator");
inline constexpr QLatin1String kCICategoryReduction("CICategoryReduction");
inline constexpr QLatin1String kCICategoryGradient("CICategoryGradient");
inline constexpr QLatin1String kCICategoryStylize("CICategoryStylize");
inline constexpr QLatin1String kCICategorySharpen("CICategorySharpen");
inline constexpr QLatin1String kCICategoryBlur("CICategoryBlur");
inline constexpr QLatin1String kCICategoryVideo("CICategoryVideo");
inline constexpr QLatin1String kCICategoryStillImage("CICategoryStillImage");
inline constexpr QLatin1String kCICategoryInterlaced("CICategoryInterlaced");
inline constexpr QLatin1String kCICategoryNonSquarePixels("CICategoryNonSquarePixels");
inline constexpr QLatin1String kCICategoryHighDynamicRange("CICategoryHighDynamicRange");
inline constexpr QLatin1String kCICategoryBuiltIn("CICategoryBuiltIn");
inline constexpr QLatin1String kCICategoryFilterGenerator("CICategoryFilterGenerator");
/// @}

} // namespace dravelin
