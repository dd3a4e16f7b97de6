// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/imaging.h>

#include <QtGui/QPainter>
#include <QtWidgets/QSlider>

using namespace dravelin;

namespace {

QImage filled(Qt::GlobalColor color)
{
    QImage picture(8, 8, QImage::Format_ARGB32);
    picture.fill(color);
    return picture;
}

void filtersHaveNames()
{
    const QImage photo = filled(Qt::red);
    const std::pair<std::shared_ptr<ImageFilter>, const char *> filters[] = {
        {createCIFilter("CISepiaTone", "Brown"), "Brown"},
        {sepiaFilter(1), "Sepia Tone"},
        {vignetteFilter(1, 1), "Vignette"},
        {saturationBrightnessContrastFilter(1, 0, 1), "Color"},
        {saturationFilter(0), "Saturation"},
        {brightnessFilter(0), "Brightness"},
        {contrastFilter(1), "Contrast"},
        {exposureFilter(1), "Exposure"},
        {hueFilter(90), "Hue"},
        {vibranceFilter(0), "Vibrance"},
        {shadowsFilter(0), "Shadows"},
        {colorInvertFilter(), "Color Invert"},
        {falseColorFilter(photo, Qt::black, Qt::white), "False Color"},
        {colorDiminishedFilter(), "Color Diminished"},
        {colorExaggeratedFilter(), "Color Exaggerated"},
        {colorDistortedFilter(), "Color Distorted"},
        {colorCoolFilter(), "Color Cool"},
        {colorWarmFilter(), "Color Warm"},
        {blackAndWhiteFilter(), "Black and White"},
        {blackAndWhiteDiminishedFilter(), "Black and White Diminished"},
        {blackAndWhiteExaggeratedFilter(), "Black and White Exaggerated"},
        {dissolveTransitionFilter(photo, 0.5F), "Dissolve Transition"},
        {blendWithMaskFilter(photo, photo, photo), "Blend with Mask"},
        {colorBlendFilter(photo), "Color Blend"},
        {colorMultiplyBlendFilter(photo), "Color Multiply Blend"},
        {hueBlendFilter(photo), "Hue Blend"},
        {luminosityBlendFilter(photo), "Luminosity Blend"},
        {saturationBlendFilter(photo), "Saturation Blend"},
    };
    for (const auto &[filter, name] : filters) {
        CHECK(filter->name() == name);
        filter->setValue(photo, kCIInputImageKey);
        CHECK(filter->outputImage().toImage().size() == photo.size());
    }
}

void filtersHaveInputs()
{
    const auto filter = ImageFilter::filterWithName("CISepiaTone");
    filter->setName("Brown");
    CHECK(filter->name() == "Brown" && filter->setValue(0.25, kCIInputIntensityKey));
    CHECK(filter->value(kCIInputIntensityKey) == 0.25);
    filter->setDefaults();
    CHECK(filter->value(kCIInputIntensityKey) == getDefaultValue(filter, kCIInputIntensityKey));
    CHECK(filter->attributes().contains(kCIInputIntensityKey));
    QSlider slider;
    configureSliderWithFilterAttributes(filter, &slider, kCIInputIntensityKey);
    CHECK(filterSliderValue(&slider) == 1);
    CHECK(ImageFilter::filterNamesInCategory(kCICategoryColorEffect).contains("CISepiaTone"));
    CHECK(ImageFilter::filterNamesInCategories().contains("CISepiaTone"));
    CHECK(getCategoryNames().contains(kCICategoryColorEffect) && dumpAllCategoryNames().contains("CICategoryBlur"));
    CHECK(dumpAllFilters().contains("CISepiaTone") && dumpAllFiltersWithAttributes().contains("inputIntensity"));
}

void filtersMakeChains()
{
    FilterProcessor chain(2);
    chain.addFilter(saturationFilter(0), 0, 2);
    chain.addFilter(colorInvertFilter(), 0, 1);
    chain.addFilter(sepiaFilter(1), 1, 1);
    chain.deleteFilterLevel(1, 1);
    const QColor color = chain.applyFilters(filled(Qt::red)).pixelColor(3, 3);
    CHECK(color.red() == color.blue() && chain.filterCount() == 2 && chain.getAllFilters().size() == 2);
    CHECK(chain.findFilter("Saturation") && !chain.findFilter("Hue"));
    chain.deleteFilterWithName("Saturation");
    FilterLevel level = chain.filterItems(0);
    level.prepend(std::make_shared<FilterItem>(FilterItem{9, false, 0, hueFilter(0)}));
    FilterProcessor::sortFilterList(level);
    CHECK(level.last()->index == 9 && FilterProcessor::findAndDeleteFilter("Hue", level) && level.size() == 1);
    chain.deleteAllFilters();
    chain.updateFilterCount();
    CHECK(chain.filterCount() == 0);
}

void iconsAreTinted()
{
    const QImage photo = filled(Qt::red);
    ImageOverlay overlay(photo, Image(photo));
    CHECK(overlay.getOverlayImage().toImage().pixelColor(1, 1) == Qt::red);
    overlay.colorImageWithHue(0.6F, 0.8F);
    CHECK(overlay.getOverlayImage().toImage().size() == photo.size());
    overlay.colorImageWithGrayscale(0.5F);
    CHECK(overlay.getOverlayImageWithSize({4, 4}).size() == QSizeF(4, 4));
    overlay.overlayImage();
    overlay.copyAlphaChannel();
    overlay.createPixelList();
    overlay.compositeWithBackground();
    CHECK(!overlay.getOverlayImage().isNull() && overlay.pixelEntryCount() == overlay.pixelList().pixelCount());
    CHECK(createMultiplyColorOverlay(photo, 0.5F, 1).size() == photo.size());
    CHECK(createGrayScaleOverlay(photo, 0.5F).size() == photo.size());
    ImageOverlay::convertRepresentationToBitmap(photo);
    CHECK(ImageOverlay::alphaIndex(BitmapImageRep(photo)) % 3 == 0);
    PixelList pixels;
    pixels.addPixelX(1, 2, 3);
    CHECK(pixels.pixelCount() == 1 && pixels.alphaEntries()->alpha == 3);
}

void imagesHaveRepresentations()
{
    Image image(QSizeF(8, 8));
    const auto bitmap = std::make_shared<BitmapImageRep>(filled(Qt::blue));
    image.addRepresentation(bitmap);
    CHECK(image.representations().size() == 1 && image.firstBitmap() == bitmap);
    image.noCache();
    image.recache();
    ImageFocus focus = image.lockFocus();
    Image(filled(Qt::red)).drawInRect(focus.painter(), {0, 0, 4, 8});
    Image(filled(Qt::green)).drawInRect(focus.painter(), {4, 0, 4, 8}, {}, NSCompositeCopy, 1);
    focus.unlockFocus();
    CHECK(image.toImage().pixelColor(1, 1) == Qt::red && image.toImage().pixelColor(6, 6) == Qt::green);
    const auto copy = BitmapImageRep::imageRepWithData(image.getImageData(NSPNGFileType));
    PixelSamples samples;
    copy->getPixel(samples, 1, 1);
    CHECK(samples[0] == 255 && (copy->bitmapFormat() & NSAlphaFirstBitmapFormat) == 0);
    samples[0] = 7;
    copy->setPixel(samples, 1, 1);
    CHECK(copy->toImage().pixelColor(1, 1).red() == 7);
    image.removeRepresentation(image.representations().constFirst());
    CHECK(image.representations().isEmpty());
}

} // namespace

void useImaging()
{
    filtersHaveNames();
    filtersHaveInputs();
    filtersMakeChains();
    iconsAreTinted();
    imagesHaveRepresentations();
}
