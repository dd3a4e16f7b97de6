// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values.h>

#include <support/printers.h>

#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

#include <cmath>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Most = std::numeric_limits<qint64>::max();
constexpr quint64 MostUnits = std::numeric_limits<quint64>::max();

} // namespace

TEST(DecimalNumber, CutsWhatItIsGiven)
{
    const struct
    {
        quint64 precision;
        double value;
        qint64 whole;
        quint64 units;
        const char *text;
        double back;
    } rows[] = {{3, 12.045, 12, 44, "12.044", 12.044},
                {3, 12.5, 12, 500, "12.500", 12.5},
                {2, 2.75, 2, 75, "2.75", 2.75},
                {2, 1.999999, 1, 99, "1.99", 1.99},
                {0, 7.9, 7, 0, "7", 7},
                {2, -1.5, -1, 0, "-1.00", -1},
                {2, -0.5, 0, 0, "0.00", 0},
                {2, std::nan(""), 0, 0, "0.00", 0},
                {0, 1e300, Most, MostUnits, "9223372036854775807", 9223372036854775808.0},
                {1, -HUGE_VAL, -Most - 1, 0, "-9223372036854775808.0", -9223372036854775808.0},
                {1, 9223372036854775808.0, Most, 0, "9223372036854775807.0", 9223372036854775808.0},
                {20, 0.5, 0, MostUnits, "0.18446744073709551615", 0.18446744073709551615},
                {22, 0.0, 0, 0, "0.0000000000000000000000", 0}};
    for (const auto &row : rows) {
        const auto number = DecimalNumber::withPrecision(row.precision);
        number->setDoubleValue(row.value);
        EXPECT_EQ(number->integerDigits(), row.whole) << row.value;
        EXPECT_EQ(number->fractionalDigits(), row.units) << row.value;
        EXPECT_EQ(number->getStringValue(), QLatin1String(row.text));
        EXPECT_EQ(number->getDoubleValue(), row.back) << row.value;
    }
}

TEST(DecimalNumber, WorksInSinglePrecisionOnFloats)
{
    const struct
    {
        quint64 precision;
        float value;
        const char *text;
        float back;
    } rows[] = {
        {2, 1.005F, "1.00", 1},
        {3, 12.045F, "12.045", 12.045F},
        {1, 1.25F, "1.2", 1.2F},
        {6, 16777217.9F, "16777218.000000", 16777218},
        {2, HUGE_VALF, "9223372036854775807.18446744073709551615", 184467440737095516.0F + 9223372036854775808.0F}};
    for (const auto &row : rows) {
        const auto number = DecimalNumber::withPrecision(row.precision);
        number->setFloatValue(row.value);
        EXPECT_EQ(number->getStringValue(), QLatin1String(row.text));
        EXPECT_EQ(number->getFloatValue(), row.back) << row.value;
    }
}

TEST(DecimalNumber, PartsAndPrecisionAreIndependent)
{
    const auto number = DecimalNumber::withPrecision(3);
    number->setIntegerDigits(12);
    number->setFractionalDigits(5);
    EXPECT_EQ(number->getStringValue(), u"12.005"_s);
    number->setPrecision(1);
    number->setFractionalDigits(12345);
    EXPECT_EQ(number->getStringValue(), u"12.12345"_s);
    EXPECT_EQ(number->getDoubleValue(), 12 + 1234.5);
    number->setPrecision(0);
    EXPECT_EQ(number->getStringValue(), u"12"_s);
    EXPECT_EQ(number->getFloatValue(), 12.0F);
    number->setPrecision(2);
    number->setStringValue(u" 3.14159 or so"_s);
    EXPECT_EQ(number->getStringValue(), u"3.14"_s);
    number->setPrecision(MostUnits);
    EXPECT_EQ(number->getStringValue().size(), 2 + qsizetype(DecimalNumber::MaximumPrecision));

    DecimalNumber withoutScale;
    withoutScale.setDoubleValue(1e300);
    EXPECT_EQ(withoutScale.fractionalDigits(), 0U);
    EXPECT_EQ(withoutScale.integerDigits(), Most);
}

TEST(DecimalNumber, AnnouncesWhatChangesAndNothingElse)
{
    const auto number = DecimalNumber::withPrecision(1);
    QSignalSpy whole(number.get(), &DecimalNumber::integerDigitsChanged);
    QSignalSpy units(number.get(), &DecimalNumber::fractionalDigitsChanged);
    QSignalSpy value(number.get(), &DecimalNumber::valueChanged);
    number->setDoubleValue(2.5);
    number->setDoubleValue(2.55);
    number->setFloatValue(3.5F);
    number->setPrecision(1);
    EXPECT_EQ((QList{whole.size(), units.size(), value.size()}), (QList<qsizetype>{2, 1, 2}));

    number->setProperty("doubleValue", 5.0); // its setter only takes note
    EXPECT_EQ(number->property("doubleValue"), QVariant(3.5));
    number->setProperty("stringValue", u"4.5"_s);
    EXPECT_EQ(number->getDoubleValue(), 4.5);

    auto *mortal = new DecimalNumber;
    QObject::connect(mortal, &DecimalNumber::integerDigitsChanged, mortal, [mortal] { delete mortal; });
    mortal->setDoubleValue(1); // must not touch the deleted number
}

TEST(DecimalRect, PassesThroughSinglePrecision)
{
    const auto rect = DecimalRect::withPercision(1);
    QSignalSpy changed(rect.get(), &DecimalRect::rectValueChanged);
    rect->setRectValue({1.25, 2.0, 10.99, 0.5});
    const QRectF value = rect->property("rectValue").toRectF();
    EXPECT_EQ(value.x(), double(1.2F));
    EXPECT_EQ(value.y(), 2.0);
    EXPECT_EQ(value.width(), double(10.9F));
    EXPECT_EQ(value.height(), 0.5);
    EXPECT_EQ(changed.size(), 1);
    rect->setRectValue({1.25, 2.0, 10.99, 0.5});
    EXPECT_EQ(changed.size(), 1);
    rect->height()->setStringValue(u"7"_s);
    EXPECT_EQ(rect->getRectValue().height(), 7.0);
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(DecimalRect::initWithPercision(2)->x()->getStringValue(), u"0.00"_s);

    auto *mortal = new DecimalRect(1);
    QObject::connect(mortal->y(), &DecimalNumber::valueChanged, mortal, [mortal] { delete mortal; });
    mortal->setRectValue({1, 2, 3, 4}); // must not touch the deleted rectangle
}
