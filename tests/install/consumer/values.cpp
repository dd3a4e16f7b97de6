// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/values.h>

#include <QtCore/QDir>

using namespace dravelin;

namespace {

void numbersHaveText()
{
    CHECK(strToInt(" 12 apples") == 12);
    CHECK(strToBool("YES") && !strToBool("no"));
    CHECK(strToFloat("0.5") == 0.5F);
    CHECK(strToDouble("1.5e3") == 1500);
    CHECK(intToStr(-7) == "-7");
    CHECK(boolToStr(1) == "YES");
    CHECK(floatToStr(0.1F, 9) == "0.100000001");
    CHECK(doubleToStr(2.5, 0) == "2");
    CHECK(radiansToDegrees(degreesToRadians(90)) == 90);
    CHECK(randomValueBetween(3, 3) == 3);
}

void textHasBytes()
{
    CHECK(dataToStr(strToData("é")) == "é");
    CHECK(strToMstr(mstrToStr("copy")) == "copy");
    CHECK(colorToString(stringToColor("0.5 0 0 1")) == "0.500 0.000 0.000 1.000");
    CHECK(rgbColor(255, 0, 0) == rgbaColor(255, 0, 0, 255));
    const QUrl home = QUrl::fromLocalFile(QDir::tempPath());
    CHECK(bookmarkToUrl(urlToBookmark(home)).toLocalFile() == QDir::tempPath());
}

void datesAreTakenApart()
{
    qint64 month = 0, day = 0, year = 0, hour = 0, minute = 0, second = 0;
    const QDateTime leapDay(QDate(2024, 2, 29), QTime(12, 0));
    convertDateToMDY(leapDay, month, day, year);
    CHECK(month == 2 && day == 29 && year == 2024);
    convertDateToHMS(leapDay, hour, minute, second);
    CHECK(hour == NSDateComponentUndefined);
    getCurrentDate(month, day, year);
    CHECK(year >= 2024 && month <= 12 && day <= 31);
    getCurrentTime(hour, minute, second);
    CHECK(second == NSDateComponentUndefined);
}

void decimalsAreKept()
{
    const auto price = DecimalNumber::withPrecision(2);
    price->setStringValue("12.5");
    CHECK(price->getStringValue() == "12.50");
    price->setPrecision(3);
    price->setIntegerDigits(2);
    price->setFractionalDigits(500);
    CHECK(price->getDoubleValue() == 2.5 && price->getFloatValue() == 2.5F);
    price->setFloatValue(0.25F);
    price->setdoubleValue(9);
    CHECK(price->getStringValue() == "0.250");
    price->setDoubleValue(7.5);
    CHECK(price->integerDigits() == 7 && price->fractionalDigits() == 500 && price->precision() == 3);

    const auto frame = DecimalRect::withPercision(1);
    frame->setRectValue({1.25, 2, 10.99, 0.5});
    CHECK(frame->x()->getStringValue() == "1.2" && frame->y()->getStringValue() == "2.0");
    CHECK(frame->width()->getStringValue() == "10.9" && frame->height()->getStringValue() == "0.5");
    CHECK(DecimalRect::initWithPercision(1)->getRectValue() == QRectF());
}

} // namespace

void useValues()
{
    numbersHaveText();
    textHasBytes();
    datesAreTakenApart();
    decimalsAreKept();
}
