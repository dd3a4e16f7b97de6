// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/color.h>

#include <support/printers.h>

#include <QtCore/QMetaProperty>

#include <gtest/gtest.h>

#include <cmath>

using namespace dravelin;

namespace {

class Pen : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QColor ink MEMBER ink)
    Q_PROPERTY(dravelin::Color paper MEMBER paper)

public:
    QColor ink;
    Color paper;
};

QImage dot(Qt::GlobalColor color)
{
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

} // namespace

TEST(Color, KeepsTheRgbSpacesApart)
{
    const Color calibrated = Color::calibratedRgb(0.1, 2, -1, 0.5), srgb = Color::srgb(0.1, 2, -1, 0.5);
    EXPECT_FALSE(calibrated == srgb);
    EXPECT_EQ(calibrated.converted(Color::SRGB), srgb);
    EXPECT_EQ(Color::grey(0.3, 0.4).converted(Color::CalibratedRGB), Color::calibratedRgb(0.3, 0.3, 0.3, 0.4));
    EXPECT_EQ(Color::grey(0.3).converted(Color::Grey), Color::grey(0.3));
    EXPECT_EQ(srgb.converted(Color::CMYK), std::nullopt);
    EXPECT_EQ(Color().converted(Color::SRGB), std::nullopt);
    EXPECT_EQ(Color().converted(Color::NoSpace), std::nullopt);
    EXPECT_EQ(Color::pattern(dot(Qt::red)).converted(Color::SRGB), std::nullopt);
}

TEST(Color, ComparesPatternsByImage)
{
    EXPECT_TRUE(Color::pattern(dot(Qt::red)) == Color::pattern(dot(Qt::red)));
    EXPECT_FALSE(Color::pattern(dot(Qt::red)) == Color::pattern(dot(Qt::blue)));
    EXPECT_FALSE(Color::pattern(dot(Qt::red)) == Color());
    EXPECT_FALSE(Color::pattern(QImage()).isValid());
}

TEST(Color, ComputesHsvAsQtDoes)
{
    for (int hue = 0; hue < 360; hue += 15) {
        const QColor expected = QColor::fromHsvF(float(hue) / 360, 0.5F, 0.8F).toRgb();
        for (const double turns : {0.0, 1.0, -1.0}) {
            const Color color = Color::hsv(hue / 360.0 + turns, 0.5, 0.8);
            EXPECT_NEAR(color.red(), expected.redF(), 2e-4) << hue;
            EXPECT_NEAR(color.green(), expected.greenF(), 2e-4) << hue;
            EXPECT_NEAR(color.blue(), expected.blueF(), 2e-4) << hue;
        }
    }
}

TEST(Color, ConvertsToAndFromQColor)
{
    EXPECT_EQ(Color(QColor(255, 128, 0, 51)), Color::srgb(1, 128 / 255.0, 0, 0.2));
    EXPECT_EQ(Color(QColor(Qt::green).toCmyk()), Color::srgb(0, 1, 0));
    EXPECT_FALSE(Color(QColor()).isValid());
    EXPECT_EQ(Color::calibratedRgb(1, 128 / 255.0, 0, 0.2).toQColor(), QColor(255, 128, 0, 51));
    EXPECT_EQ(Color(Color::srgb(2, -1, 0.5, 3).toQColor()), Color::srgb(2, -1, 0.5, 1)) << "extended range";
    EXPECT_EQ(Color::srgb(NAN, 1, 1, NAN).toQColor(), QColor(0, 255, 255, 0));
    EXPECT_FALSE(Color().toQColor().isValid());
    EXPECT_FALSE(Color::pattern(dot(Qt::red)).toQColor().isValid());
}

TEST(Color, PassesThroughVariantsAndProperties)
{
    Pen pen;
    EXPECT_TRUE(pen.setProperty("ink", QVariant::fromValue(Color::srgb(1, 0, 0))));
    EXPECT_EQ(pen.ink, QColor(Qt::red));
    EXPECT_TRUE(pen.setProperty("paper", QColor(Qt::blue)));
    EXPECT_EQ(pen.paper, Color::srgb(0, 0, 1));
    EXPECT_EQ(QVariant::fromValue(Color::srgb(0, 1, 0)).value<QColor>(), QColor(0, 255, 0));
    EXPECT_EQ(QVariant::fromValue(pen.paper), QVariant::fromValue(Color(Qt::blue)));
    const QMetaObject &meta = Color::staticMetaObject;
    EXPECT_EQ(meta.property(meta.indexOfProperty("blue")).readOnGadget(&pen.paper), QVariant(1.0));
}

TEST(Color, PrintsItsSpace)
{
    const auto printed = [](const Color &color) {
        QString text;
        QDebug(&text).nospace() << color;
        return text;
    };
    EXPECT_EQ(printed(Color::srgb(1, 0, 0.25, 0.5)), QStringLiteral("Color(SRGB 1 0 0.25 0.5)"));
    EXPECT_EQ(printed(Color()), QStringLiteral("Color(NoSpace)"));
    EXPECT_EQ(printed(Color::pattern(dot(Qt::red))), QStringLiteral("Color(Pattern QSize(1, 1))"));
}

#include "color_test.moc"
