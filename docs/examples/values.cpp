// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

static QTextStream out(stdout);

void numbers()
{
    //! [numbers]
    out << dravelin::doubleToStr(2.5, 0) << ' ' << dravelin::doubleToStr(3.5, 0) << '\n'; // ties go to the even digit
    out << dravelin::doubleToStr(0.145, 2) << '\n';        // the number below 0.145 that a double holds
    out << dravelin::floatToStr(0.1f, 9) << '\n';          // the float's exact value
    out << dravelin::strToDouble(" 1.5e3 apples") << '\n'; // what follows the number is ignored
    out << dravelin::strToInt("99999999999") << '\n';      // the nearest that 32 bits hold
    out << dravelin::intToStr(4294967297) << '\n';         // the low 32 bits
    out << dravelin::boolToStr(dravelin::strToBool("true")) << '\n';
    //! [numbers]
}

void colors()
{
    //! [colors]
    using dravelin::Color;
    const auto paper = Color::srgb(1, 0.98, 0.9);
    const auto ink = Color::cmyk(1, 0.5, 0, 0.2);
    out << dravelin::colorToString(ink) << '\n';
    out << paper.toQColor().name() << '\n';

    const Color back = dravelin::stringToColor(dravelin::colorToString(Color::calibratedRgb(1, 0, 0)));
    out << (back == Color::srgb(1, 0, 0) ? "sRGB" : "calibrated") << '\n'; // the numbers stay, the space does not
    out << (Color::calibratedRgb(1, 0, 0) == Color::srgb(1, 0, 0) ? "equal" : "different") << '\n';
    out << "red " << ink.converted(Color::SRGB)->red() << '\n';
    if (!ink.converted(Color::Grey)) // only the RGB spaces, and the one it is in
        out << "no grey\n";
    //! [colors]
}

void bookmarks()
{
    //! [bookmarks]
    const QTemporaryDir folder;
    QFile file(folder.filePath("plan.txt"));
    if (file.open(QIODevice::WriteOnly))
        file.close();
    const QByteArray bookmark = dravelin::urlToBookmark(QUrl::fromLocalFile(file.fileName()));
    file.rename(folder.filePath("old plan.txt"));
    out << dravelin::bookmarkToUrl(bookmark).fileName() << '\n';
    //! [bookmarks]
}

void decimals()
{
    //! [decimals]
    const auto price = dravelin::DecimalNumber::withPrecision(2);
    QObject::connect(price.get(), &dravelin::DecimalNumber::valueChanged,
                     [&] { out << "now " << price->getStringValue() << '\n'; });
    price->setStringValue("12.5");
    price->setStringValue("12.509"); // cut, so nothing changes
    price->setDoubleValue(-1.5);     // the fraction has no sign

    const auto frame = dravelin::DecimalRect::withPercision(1);
    frame->setRectValue({1.25, 2, 10.99, 0.5});
    out << frame->x()->getStringValue() << ' ' << frame->width()->getStringValue() << '\n';
    //! [decimals]
}

int main()
{
    numbers();
    colors();
    bookmarks();
    decimals();
}
