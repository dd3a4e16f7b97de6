// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gmock/gmock.h>

#include <QtCore/QRegularExpression>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>

#include <numbers>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

/// "display name: kind key=value ..." of the inputs that a new filter of the kind has otherwise.
QString summary(const std::shared_ptr<ImageFilter> &filter)
{
    QString result = filter->name() + u": "_s + filter->filterName();
    const auto plain = ImageFilter::filterWithName(filter->filterName());
    for (const QString &key : filter->inputKeys()) {
        const QVariant value = filter->value(key);
        if (value.typeId() == qMetaTypeId<FilterImage>())
            result += u" %1=%2"_s.arg(key).arg(value.value<FilterImage>().size().width());
        else if (value.typeId() == qMetaTypeId<Color>() && value != plain->value(key))
            result += u" %1=%2"_s.arg(key, value.value<Color>().toQColor().name());
        else if (value != plain->value(key))
            result += u" %1=%2 %3"_s.arg(key, QLatin1String(value.typeName())).arg(value.toFloat());
    }
    return result;
}

QImage wide(int width)
{
    QImage image(width, 1, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

} // namespace

TEST(FilterCatalogue, MakesEveryFilter)
{
    const FilterImage one = wide(1), two = wide(2), three = wide(3);
    const QObject anything;
    const std::pair<std::shared_ptr<ImageFilter>, const char *> rows[] = {
        {dissolveTransitionFilter(&anything, two, 0.3f),
         "Dissolve Transition: CIDissolveTransition inputTargetImage=2 inputTime=float 0.3"},
        {vignetteFilter(0.6f, 1.5f), "Vignette: CIVignette inputRadius=float 1.5 inputIntensity=float 0.6"},
        {sepiaFilter(0.8f), "Sepia Tone: CISepiaTone inputIntensity=float 0.8"},
        {colorDiminishedFilter(), "Color Diminished: CIPhotoEffectFade"},
        {colorExaggeratedFilter(), "Color Exaggerated: CIPhotoEffectChrome"},
        {colorDistortedFilter(), "Color Distorted: CIPhotoEffectInstant"},
        {colorCoolFilter(), "Color Cool: CIPhotoEffectProcess"},
        {colorWarmFilter(), "Color Warm: CIPhotoEffectTransfer"},
        {blackAndWhiteFilter(), "Black and White: CIPhotoEffectTonal"},
        {blackAndWhiteDiminishedFilter(), "Black and White Diminished: CIPhotoEffectMono"},
        {blackAndWhiteExaggeratedFilter(), "Black and White Exaggerated: CIPhotoEffectNoir"},
        {colorInvertFilter(), "Color Invert: CIColorInvert"},
        {falseColorFilter(nullptr, one, QColor(Qt::red), Color::srgb(0, 0, 1)),
         "False Color: CIFalseColor inputImage=1 inputColor0=#ff0000 inputColor1=#0000ff"},
        {blendWithMaskFilter(0, one, two, three),
         "Blend with Mask: CIBlendWithMask inputImage=1 inputBackgroundImage=2 inputMaskImage=3"},
        {colorBlendFilter(nullptr, two), "Color Blend: CIColorBlendMode inputBackgroundImage=2"},
        {colorMultiplyBlendFilter(two), "Color Multiply Blend: CIMultiplyBlendMode inputBackgroundImage=2"},
        {hueBlendFilter(wide(3)), "Hue Blend: CIHueBlendMode inputBackgroundImage=3"},
        {luminosityBlendFilter(two), "Luminosity Blend: CILuminosityBlendMode inputBackgroundImage=2"},
        {saturationBlendFilter(QVariant(), two), "Saturation Blend: CISaturationBlendMode inputBackgroundImage=2"},
        {colorBlendFilter(FilterImage()), "Color Blend: CIColorBlendMode"},
        {saturationBrightnessContrastFilter(0.5f, 0.25f, 2),
         "Color: CIColorControls inputSaturation=float 0.5 inputBrightness=float 0.25 inputContrast=float 2"},
        {saturationFilter(0.5f), "Saturation: CIColorControls inputSaturation=float 0.5"},
        {brightnessFilter(0.5f), "Brightness: CIColorControls inputBrightness=float 0.5"},
        {contrastFilter(0.5f), "Contrast: CIColorControls inputContrast=float 0.5"},
        {exposureFilter(-3), "Exposure: CIExposureAdjust inputEV=float -3"},
        {hueFilter(180), "Hue: CIHueAdjust inputAngle=float 3.14159"},
        {vibranceFilter(0.5f), "Vibrance: CIVibrance inputAmount=float 0.5"},
        {shadowsFilter(0.5f), "Shadows: CIHighlightShadowAdjust inputShadowAmount=float 0.5"},
        {createCIFilter(nullptr, u"CIVibrance"_s, u"Own"_s), "Own: CIVibrance"},
    };
    for (const auto &[filter, expected] : rows)
        EXPECT_EQ(summary(filter), QLatin1String(expected));
    const LogRecorder log;
    EXPECT_EQ(createCIFilter(u"CIUnknown"_s, u"x"_s), nullptr);
    EXPECT_EQ(log.lines().size(), 1);
}

TEST(FilterCatalogue, RoundsAnglesOnce)
{
    for (const float degrees : {0.0f, 180.0f, 0.1f, -77.7f, 1e30f})
        EXPECT_EQ(hueFilter(degrees)->value(kCIInputAngleKey).toFloat(),
                  float(double(degrees) * (std::numbers::pi / 180)));
}

TEST(FilterUtilities, ConfiguresControls)
{
    const auto hue = hueFilter(90), controls = saturationFilter(0);
    QSlider slider;
    QDoubleSpinBox box;
    box.setDecimals(6);
    const struct
    {
        std::shared_ptr<ImageFilter> filter;
        QString key;
        double minimum, maximum, value;
    } rows[] = {{hue, u"inputAngle"_s, -3.141593, 3.141593, 0},
                {controls, u"inputContrast"_s, 0.25, 4, 1},
                {controls, u"inputAngle"_s, 0, 0, 0},
                {hueBlendFilter(FilterImage()), u"inputBackgroundImage"_s, 0, 0, 0},
                {controls, u"inputSaturation"_s, 0, 2, 1},
                {nullptr, u"inputSaturation"_s, 0, 0, 0}};
    for (const auto &row : rows) {
        configureSliderWithFilterAttributes(row.filter, &slider, row.key);
        configureSliderWithFilterAttributes(row.filter, &box, row.key);
        EXPECT_DOUBLE_EQ(box.minimum(), row.minimum) << qPrintable(row.key);
        EXPECT_DOUBLE_EQ(box.maximum(), row.maximum) << qPrintable(row.key);
        EXPECT_DOUBLE_EQ(box.value(), row.value) << qPrintable(row.key);
        EXPECT_DOUBLE_EQ(getDefaultValue(row.filter, row.key), row.value);
        EXPECT_EQ(slider.minimum(), qRound(row.minimum * 1000)) << qPrintable(row.key);
        EXPECT_EQ(slider.maximum(), qRound(row.maximum * 1000)) << qPrintable(row.key);
        EXPECT_DOUBLE_EQ(filterSliderValue(&slider), filterSliderValue(&box)) << qPrintable(row.key);
    }
    struct
    {
        double calls[3] = {};
        int count = 0;
        void setMinimum(double value) { calls[count++] = value; }
        void setMaximum(double value) { calls[count++] = value; }
        void setValue(double value) { calls[count++] = value; }
    } other;
    configureSliderWithFilterAttributes(controls, &other, u"inputContrast"_s);
    EXPECT_THAT(other.calls, testing::ElementsAre(0.25, 4, 1));
    QObject none;
    const LogRecorder log;
    configureSliderWithFilterAttributes(controls, &none, u"inputContrast"_s);
    configureSliderWithFilterAttributes(controls, static_cast<QObject *>(nullptr), u"inputContrast"_s);
    EXPECT_EQ(log.lines().size(), 2);
}

TEST(FilterUtilities, DumpsCategoriesAndFilters)
{
    EXPECT_EQ(getCategoryNames().size(), 21);
    EXPECT_EQ(dumpAllCategoryNames(), getCategoryNames().join(u'\r') + u'\r');
    const QString filters = dumpAllFilters();
    EXPECT_TRUE(filters.startsWith("CICategoryDistortionEffect\r\rCICategoryGeometryAdjustment\r\r"
                                   "CICategoryCompositeOperation\r    CIColorBlendMode\r    CIHueBlendMode\r"_L1));
    EXPECT_TRUE(filters.contains("\r\rCICategoryStylize\r    CIBlendWithMask\r    CIHighlightShadowAdjust\r\r"_L1));
    EXPECT_TRUE(filters.endsWith("    CIVignette\r\rCICategoryFilterGenerator\r\r"_L1));
    const std::pair<QStringList, int> counts[] = {{{kCICategoryBuiltIn}, 24},
                                                  {{kCICategoryVideo}, 24},
                                                  {{kCICategoryInterlaced}, 22},
                                                  {{kCICategoryNonSquarePixels}, 21},
                                                  {{kCICategoryColorEffect}, 12},
                                                  {{kCICategoryColorEffect, kCICategoryNonSquarePixels}, 11},
                                                  {{kCICategoryColorEffect, kCICategoryStylize}, 0},
                                                  {{u"x"_s}, 0}};
    for (const auto &[categories, count] : counts)
        EXPECT_EQ(ImageFilter::filterNamesInCategories(categories).size(), count) << qPrintable(categories.join(u' '));

    const QString all = dumpAllFiltersWithAttributes(), rule = QString(35, u'-');
    EXPECT_EQ(all.count(u"Filter: "_s), ImageFilter::filterNamesInCategories().size());
    const qsizetype sepia = all.indexOf("Filter: CISepiaTone\r"_L1);
    EXPECT_EQ(all.sliced(sepia - 36, 36), rule + u'\r');
    EXPECT_EQ(all.sliced(sepia, all.indexOf("\r\r"_L1, sepia) - sepia), uR"(Filter: CISepiaTone
-----------------------------------
Parameters: {
    CIAttributeFilterCategories = (
        CICategoryColorEffect,
        CICategoryVideo,
        CICategoryStillImage,
        CICategoryBuiltIn,
        CICategoryInterlaced,
        CICategoryNonSquarePixels
    );
    CIAttributeFilterDisplayName = "Sepia Tone";
    CIAttributeFilterName = CISepiaTone;
    inputImage = {
        CIAttributeClass = CIImage;
        CIAttributeType = CIAttributeTypeImage;
    };
    inputIntensity = {
        CIAttributeClass = NSNumber;
        CIAttributeDefault = 1;
        CIAttributeIdentity = 0;
        CIAttributeMin = 0;
        CIAttributeSliderMax = 1;
        CIAttributeSliderMin = 0;
        CIAttributeType = CIAttributeTypeScalar;
    };
})"_s.replace(QRegularExpression(u"(Tone|-)\n"_s), u"\\1\r"_s));
    EXPECT_TRUE(all.contains("CIAttributeDefault = \"(1 0.9 0.8 1)\";"_L1));
}
