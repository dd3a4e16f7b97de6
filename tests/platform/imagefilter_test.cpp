// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/filterrecipe.h"

#include <dravelin/imaging.h>
#include <dravelin/platform/color.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gmock/gmock.h>

#include <QtGui/QPixmap>

#include <cmath>

using namespace dravelin;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

QImage picture(Qt::GlobalColor color = Qt::red)
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

std::shared_ptr<ImageFilter> filter(QLatin1String name) { return ImageFilter::filterWithName(name); }

} // namespace

TEST(ImageFilter, KeepsValuesAsTheyAreAndRefusesOtherKinds)
{
    const auto falseColor = filter("CIFalseColor"_L1), vignette = filter("CIVignette"_L1);
    QVariant pattern = QVariant::fromValue(Color::pattern(picture()));
    const struct
    {
        const char *name;
        std::shared_ptr<ImageFilter> filter;
        QString key;
        QVariant value;
        const char *kept; ///< the type; empty when it is cleared
        const char *cause = nullptr;
    } rows[] = {
        {"float", vignette, u"inputRadius"_s, 0.1f, "float"},
        {"beyond", vignette, u"inputRadius"_s, 1e300, "double"},
        {"integer", vignette, u"inputRadius"_s, 2, "int"},
        {"cleared", vignette, u"inputRadius"_s, QVariant::fromValue(nullptr), ""},
        {"text", vignette, u"inputRadius"_s, u"1"_s, "", "it takes no QString"},
        {"no key", vignette, u"inputradius"_s, 1, "", "there is none"},
        {"QColor", falseColor, u"inputColor0"_s, QColor(Qt::blue), "dravelin::Color"},
        {"no colour", falseColor, u"inputColor0"_s, QVariant::fromValue(Color()), ""},
        {"colour", falseColor, u"inputColor0"_s, QVariant::fromValue(Color::grey(2)), "dravelin::Color"},
        {"pattern", falseColor, u"inputColor0"_s, pattern, "dravelin::Color", "it takes no dravelin::Color"},
        {"image for colour", falseColor, u"inputColor0"_s, picture(), "dravelin::Color", "it takes no QImage"},
        {"image", falseColor, u"inputImage"_s, picture(), "dravelin::FilterImage"},
        {"colour for image", falseColor, u"inputImage"_s, QColor(), "dravelin::FilterImage", "it takes no QColor"},
        {"null image", falseColor, u"inputImage"_s, QImage(), ""},
        {"pixmap", falseColor, u"inputImage"_s, QPixmap::fromImage(picture()), "dravelin::FilterImage"},
    };
    for (const auto &row : rows) {
        LogRecorder log;
        EXPECT_EQ(row.filter->setValue(row.value, row.key), !row.cause) << row.name;
        EXPECT_STREQ(row.filter->value(row.key).isValid() ? row.filter->value(row.key).typeName() : "", row.kept)
            << row.name;
        EXPECT_EQ(log.lines().size(), row.cause ? 1 : 0) << row.name;
        EXPECT_TRUE(!row.cause || log.lines().value(0).contains(QLatin1String(row.cause))) << row.name;
    }
    vignette->setValue(std::nan(""), u"inputRadius"_s);
    EXPECT_TRUE(std::isnan(vignette->value(u"inputRadius"_s).toDouble()));
}

TEST(ImageFilter, DefaultsLeavePicturesAlone)
{
    const auto dissolve = filter("CIDissolveTransition"_L1);
    dissolve->setValue(0.5, kCIInputTimeKey);
    dissolve->setValue(picture(), kCIInputTargetImageKey);
    dissolve->setName(u"mine"_s);
    const auto copy = dissolve->copy();
    dissolve->setDefaults();
    EXPECT_EQ(dissolve->value(kCIInputTimeKey), QVariant(0.0));
    EXPECT_EQ(dissolve->value(kCIInputTargetImageKey).value<FilterImage>().size(), QSize(3, 2));
    EXPECT_EQ(copy->value(kCIInputTimeKey), QVariant(0.5));
    EXPECT_EQ(copy->name(), u"mine"_s);
    EXPECT_EQ(copy->filterName(), u"CIDissolveTransition"_s);
    EXPECT_EQ(copy->inputKeys(), QStringList({u"inputImage"_s, u"inputTargetImage"_s, u"inputTime"_s}));
    const LogRecorder log;
    EXPECT_EQ(filter("CISepia"_L1), nullptr);
    EXPECT_EQ(log.lines().size(), 1);
}

TEST(ImageFilter, AnOutputImageIsWhatTheFilterWasThen)
{
    const auto multiply = filter("CIMultiplyBlendMode"_L1), controls = filter("CIColorControls"_L1);
    multiply->setValue(picture(), kCIInputBackgroundImageKey);
    EXPECT_TRUE(multiply->outputImage().isNull());
    controls->setValue(picture(), kCIInputImageKey);
    controls->setValue(QVariant(), kCIInputContrastKey);
    controls->setValue(0.5f, kCIInputBrightnessKey);
    multiply->setValue(controls->outputImage(), kCIInputImageKey);
    const FilterImage output = multiply->outputImage();
    controls->setValue(-1, kCIInputBrightnessKey);
    multiply->setValue(QVariant(), kCIInputBackgroundImageKey);

    const auto &recipe = *output.recipe();
    EXPECT_EQ(recipe.filter, u"CIMultiplyBlendMode"_s);
    EXPECT_TRUE(recipe.values.isEmpty());
    EXPECT_THAT(recipe.images.keys(), ElementsAre(u"inputBackgroundImage"_s, u"inputImage"_s));
    const auto &inner = *recipe.images[kCIInputImageKey];
    EXPECT_EQ(inner.values,
              QVariantMap({{u"inputSaturation"_s, 1.0}, {u"inputBrightness"_s, 0.5f}, {u"inputContrast"_s, 1.0}}));
    EXPECT_EQ(inner.images[kCIInputImageKey]->source, picture());
    EXPECT_TRUE(multiply->outputImage().recipe()->images.keys() == QStringList(kCIInputImageKey));
}

TEST(ImageFilter, ApplicationsRegisterTheirOwn)
{
    const PixelKernel kernel = [](const PixelBlock &block, const QVariantMap &values) {
        std::fill_n(block.green, block.count, values.value(u"inputLevel"_s).toFloat());
    };
    const FilterDescription level{
        .displayName = u"Level"_s,
        .categories = {kCICategoryReduction},
        .inputs = {{.key = u"inputLevel"_s, .defaultValue = 1, .sliderMaximum = 2},
                   {.key = u"inputTint"_s, .type = kCIAttributeTypeColor, .defaultValue = QColor(Qt::red)}},
        .kernel = kernel};
    ASSERT_TRUE(registerFilter(u"TestLevel"_s, level));
    const auto made = filter("TestLevel"_L1);
    EXPECT_EQ(made->value(u"inputTint"_s).value<Color>(), Color(Qt::red));
    EXPECT_EQ(ImageFilter::filterNamesInCategory(kCICategoryReduction), QStringList(u"TestLevel"_s));
    made->setValue(picture(), kCIInputImageKey);
    EXPECT_EQ(made->outputImage().toImage().pixelColor(2, 1), QColor(Qt::yellow));

    ASSERT_TRUE(registerFilter(u"TestLevel"_s, {.categories = {}, .kernel = kernel}));
    EXPECT_TRUE(ImageFilter::filterNamesInCategory(kCICategoryReduction).isEmpty());
    EXPECT_EQ(made->inputs().size(), 2);

    const FilterInput text{.key = u"a"_s, .defaultValue = u"1"_s};
    const std::pair<QString, FilterDescription> refused[] = {
        {u""_s, level},
        {u"CISepiaTone"_s, level},
        {u"TestX"_s, {}},
        {u"TestX"_s, {.inputs = {text}, .kernel = kernel}},
        {u"TestX"_s, {.inputs = {{.key = u"a"_s}, {.key = u"a"_s}}, .kernel = kernel}},
        {u"TestX"_s, {.inputs = {{.key = kCIInputImageKey}}, .kernel = kernel}}};
    for (const auto &[name, description] : refused) {
        const LogRecorder log;
        EXPECT_FALSE(registerFilter(name, description));
        EXPECT_EQ(log.lines().size(), 1);
    }
    EXPECT_FALSE(ImageFilter::filterNamesInCategories().contains(u"TestX"_s));
}
