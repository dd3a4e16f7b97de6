// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>
#include <QtGui/QGuiApplication>

static QTextStream out(stdout);

static void print(const char *what, const QImage &image, int x, int y)
{
    const QColor color = image.pixelColor(x, y);
    out << what << ' ' << color.name(QColor::HexArgb) << '\n';
}

/// A light square whose left half is translucent.
static QImage makeIcon()
{
    QImage icon(16, 16, QImage::Format_ARGB32);
    icon.fill(QColor(240, 240, 240));
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 8; ++x)
            icon.setPixelColor(x, y, QColor(240, 240, 240, 128));
    }
    return icon;
}

void tints(const QImage &icon)
{
    //! [tints]
    dravelin::ImageOverlay overlay(icon);
    out << overlay.pixelEntryCount() << " pixels are not opaque\n";

    overlay.colorImageWithHue(0.6f, 0.8f);
    const QPixmap blue = overlay.getOverlayImage().toPixmap();

    overlay.colorImageWithGrayscale(0.5f); // half black
    const QPixmap dimmed = overlay.getOverlayImage().toPixmap();
    //! [tints]
    print("blue", blue.toImage(), 12, 8);
    print("dimmed", dimmed.toImage(), 12, 8);
    print("and where it is translucent", overlay.getOverlayImage().toImage(), 2, 8);
}

void background(const QImage &icon)
{
    QImage plate(1, 1, QImage::Format_RGB32);
    plate.fill(Qt::black);
    //! [background]
    dravelin::ImageOverlay overlay(icon, plate);
    overlay.colorImageWithHue(0, 1);
    const QImage onPlate = overlay.getOverlayImage().toImage();
    const QImage large = overlay.getOverlayImageWithSize({64, 64}).toImage();
    //! [background]
    print("on the plate", onPlate, 2, 8);
    out << "and " << large.width() << " pixels wide\n";
}

void drawing(const QImage &icon)
{
    //! [drawing]
    dravelin::Image image(icon);
    {
        dravelin::ImageFocus focus = image.lockFocus();
        focus.painter().fillRect(QRectF(12, 0, 4, 4), Qt::red); // a badge
    }
    const auto bitmap = image.firstBitmap();
    dravelin::PixelSamples samples;
    bitmap->getPixel(samples, 0, 0);
    const auto alpha = std::size_t(dravelin::ImageOverlay::alphaIndex(*bitmap));
    samples[alpha] = 255;
    bitmap->setPixel(samples, 0, 0);
    const QByteArray file = image.getImageData(dravelin::NSPNGFileType);
    //! [drawing]
    print("the badge", image.toImage(), 15, 0);
    print("the corner", dravelin::BitmapImageRep::imageRepWithData(file)->toImage(), 0, 0);
}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QImage icon = makeIcon();
    tints(icon);
    background(icon);
    drawing(icon);
}
