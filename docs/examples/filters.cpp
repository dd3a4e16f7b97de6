// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>
#include <QtWidgets/QSlider>

static QTextStream out(stdout);

static QString colorAt(const QImage &image) { return image.pixelColor(image.rect().center()).name(); }

void chains(const QImage &photo)
{
    //! [chain]
    dravelin::FilterProcessor chain(2); // two levels
    chain.addFilter(dravelin::exposureFilter(0.5f), 0, 1);
    chain.addFilter(dravelin::sepiaFilter(0.8f), 0, 2);
    chain.addFilter(dravelin::vignetteFilter(0.6f, 1.2f), 1, 0);

    const QImage result = chain.applyFilters(photo);
    out << result.width() << " x " << result.height() << ' ' << colorAt(result) << '\n';

    chain.addFilter(dravelin::sepiaFilter(0.2f), 1, 9); // takes the place of the other "Sepia Tone"
    for (const auto &filter : chain.getAllFilters())
        out << filter->name() << '\n';
    //! [chain]
}

void oneFilter(const QImage &photo)
{
    //! [filter]
    const auto filter = dravelin::ImageFilter::filterWithName("CIColorControls");
    filter->setValue(0, dravelin::kCIInputSaturationKey);
    filter->setValue(photo, dravelin::kCIInputImageKey);
    const dravelin::FilterImage grey = filter->outputImage(); // a recipe: no pixels yet
    filter->setDefaults();
    out << colorAt(grey.toImage()) << ' ' << colorAt(filter->outputImage().toImage()) << '\n';
    //! [filter]
}

void sliders(const QImage &photo)
{
    //! [slider]
    const auto vibrance = dravelin::vibranceFilter(0);
    QSlider slider;
    dravelin::configureSliderWithFilterAttributes(vibrance, &slider, "inputAmount");
    QObject::connect(&slider, &QSlider::valueChanged, [&] {
        vibrance->setValue(dravelin::filterSliderValue(&slider), "inputAmount");
        out << "vibrance " << vibrance->value("inputAmount").toDouble() << '\n';
    });
    slider.setValue(350); // thousandths
    //! [slider]

    //! [thumbnail]
    dravelin::FilterProcessor chain(1);
    chain.addFilter(vibrance, 0, 0);
    const QImage icon = chain.thumbnail(photo, QSize(64, 64));
    out << icon.width() << " x " << icon.height() << '\n';
    //! [thumbnail]
}

void background(const QImage &photo)
{
    dravelin::FilterProcessor chain(1);
    chain.addFilter(dravelin::colorInvertFilter(), 0, 0);
    //! [async]
    QFuture<QImage> future = chain.applyFiltersAsync(photo);
    chain.deleteAllFilters(); // the work goes on with the filters that there were
    out << colorAt(future.result()) << '\n';
    //! [async]
}

void text()
{
    //! [text]
    dravelin::FilterProcessor chain(2);
    chain.addFilter(dravelin::hueFilter(90), 1, 5);
    const QByteArray text = chain.encodeChain(); // for a settings entry, a file, the clipboard

    if (const auto copy = dravelin::FilterProcessor::decodeChain(text))
        out << copy->levelCount() << " levels, " << copy->findFilter("Hue")->value("inputAngle").toDouble() << '\n';
    //! [text]
}

void ownFilter(const QImage &photo)
{
    //! [own]
    dravelin::registerFilter("Threshold", {.displayName = "Threshold",
                                           .categories = {dravelin::kCICategoryColorEffect},
                                           .inputs = {{.key = "inputLevel", .defaultValue = 0.5}},
                                           .kernel = [](const dravelin::PixelBlock &block, const QVariantMap &values) {
                                               const float level = values["inputLevel"].toFloat();
                                               for (int i = 0; i < block.count; ++i) {
                                                   const float value = block.green[i] < level ? 0.0f : 1.0f;
                                                   block.red[i] = block.green[i] = block.blue[i] = value;
                                               }
                                           }});
    dravelin::FilterProcessor chain(1);
    chain.addFilter(dravelin::ImageFilter::filterWithName("Threshold"), 0, 0);
    out << colorAt(chain.applyFilters(photo)) << '\n';
    //! [own]
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QImage photo(600, 400, QImage::Format_RGB32);
    photo.fill(QColor(90, 120, 150));
    chains(photo);
    oneFilter(photo);
    sliders(photo);
    background(photo);
    text();
    ownFilter(photo);
}
