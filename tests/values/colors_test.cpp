// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values.h>

#include <support/decimalcomma.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtGui/QImage>

#include <cmath>
#include <cstdio>
#include <random>
#include <string>

using namespace dravelin;

namespace {

Color scanned(const std::string &text)
{
    float c[4] = {};
    std::sscanf(text.c_str(), "%f %f %f %f", &c[0], &c[1], &c[2], &c[3]);
    return Color::srgb(c[0], c[1], c[2], c[3]);
}

// Components as text, so that NaN equals itself.
QString shown(const Color &color)
{
    QString text;
    QDebug(&text) << color;
    return text.replace(QStringLiteral("-nan"), QStringLiteral("nan"));
}

} // namespace

TEST(ColorToString, PrintsTheCalibratedComponents)
{
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(Qt::red);
    const struct
    {
        Color color;
        const char *text;
    } rows[] = {
        {Color::calibratedRgb(1, 1, 1), "1.000 1.000 1.000 1.000"},
        {Color::srgb(0.5, 0, 0), "0.500 0.000 0.000 1.000"},
        {Color::srgb(-1, 2.0005, 123456, 0.0625), "-1.000 2.001 123456.000 0.062"},
        {Color::grey(0.25, 0.5), "0.250 0.250 0.250 0.500"},
        {Color::cmyk(0, 1, 0.5, 0.5), "0.500 0.000 0.250 1.000"},
        {Color::pattern(image), "0.000 0.000 0.000 0.000"},
        {Qt::red, "1.000 0.000 0.000 1.000"},
        {Color(), "0.000 0.000 0.000 0.000"},
    };
    const DecimalComma comma;
    for (const auto &row : rows)
        EXPECT_EQ(colorToString(row.color), QString::fromLatin1(row.text));
}

TEST(StringToColor, ReadsIntoSrgb)
{
    const DecimalComma comma;
    EXPECT_EQ(stringToColor(QStringLiteral("1 0 0 0.5")), Color::srgb(1, 0, 0, 0.5));
    EXPECT_EQ(stringToColor(QStringLiteral("7 -3")), Color::srgb(7, -3, 0, 0));
    EXPECT_EQ(stringToColor(QString()), Color::srgb(0, 0, 0, 0));
    EXPECT_EQ(stringToColor(QStringLiteral("1 2\u00A03 4")), Color::srgb(1, 2, 0, 0));
    EXPECT_EQ(stringToColor(QStringLiteral("1 2") + QChar(0) + QStringLiteral("3 4")), Color::srgb(1, 2, 0, 0));
    EXPECT_EQ(stringToColor(QStringLiteral("0.1 0 0 1")), Color::srgb(0.1F, 0, 0, 1)) << "single precision";
    EXPECT_EQ(stringToColor(colorToString(Color::grey(0.5))), Color::srgb(0.5, 0.5, 0.5));
}

TEST(StringToColor, ScansOddTextAsTheCLibraryDoes)
{
    for (const char *text : {"1-2+3.5.5",
                             "1e 2",
                             "1e+ 2 3",
                             "1e5x2",
                             "1e5-3",
                             "1.e2.5",
                             ".",
                             "-",
                             "+.5-.5",
                             "-.",
                             "1 . 2",
                             "0x",
                             "0x1p3 0X.8P-1",
                             "0x. 1",
                             "0x.p1 2",
                             "0xp 3",
                             "0x1p 2",
                             "0x1p+-2",
                             "00x1 2",
                             "inf -inf",
                             "infinity2",
                             "infin 1",
                             "INFINITYx",
                             "in 1",
                             "nan -nan 1",
                             "nan(7) 1",
                             "nanx",
                             "na",
                             "1e99 -1e99",
                             "1e-60 1",
                             "\f\v1\r2\n3\t4",
                             "1,2,3,4",
                             "1 2 3 4 5",
                             "+ 1",
                             "--1",
                             "1e5e5",
                             "0.1.2.3.4",
                             "0x1.8.8 1",
                             "1E5 1e05 1e-05",
                             "0e 1 2 3",
                             "0x1e5 2",
                             "-0 0"})
        EXPECT_EQ(shown(stringToColor(QString::fromLatin1(text))), shown(scanned(text))) << text;
}

TEST(StringToColor, ScansRandomTextAsTheCLibraryDoes)
{
    const auto seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::string pieces[] = {"0",  "1",  "9", "25", ".",   "-",   "+",     "e",
                                  "E",  "x",  "p", "0x", "inf", "nan", "inity", " ",
                                  " ",  "\n", "a", "f",  "(",   "1e",  "e-",    "12345678901234567890",
                                  "e40"};
    for (int round = 0; round < 100'000; ++round) {
        std::string text;
        for (auto count = random() % 16; count > 0; --count)
            text += pieces[random() % std::size(pieces)];
        ASSERT_EQ(shown(stringToColor(QString::fromStdString(text))), shown(scanned(text))) << text;
    }
}

TEST(RgbColor, DividesInSinglePrecision)
{
    EXPECT_EQ(rgbColor(255, 128, 0), Color::srgb(1, double(128 / 255.0F), 0, 1));
    EXPECT_EQ(rgbaColor(510, -255, 0, 51), Color::srgb(2, -1, 0, double(51 / 255.0F)));
}
