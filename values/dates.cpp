// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values/conversions.h>

#include <QtCore/QCalendar>

#include <cstdlib>

namespace dravelin {

namespace {

QCalendar::YearMonthDay civilDate(QDate date)
{
    static const QDate firstGregorian(1582, 10, 15);
    const QCalendar calendar(date < firstGregorian ? QCalendar::System::Julian : QCalendar::System::Gregorian);
    return calendar.partsFromDate(date);
}

} // namespace

void convertDateToMDY(const QDateTime &date, qint64 &month, qint64 &day, qint64 &year)
{
    month = day = year = NSDateComponentUndefined;
    if (!date.isValid())
        return;
    const auto parts = civilDate(date.toLocalTime().date());
    month = parts.month;
    day = parts.day;
    year = std::abs(parts.year);
}

void convertDateToHMS(const QDateTime &, qint64 &hour, qint64 &minute, qint64 &second)
{
    hour = minute = second = NSDateComponentUndefined;
}

void getCurrentDate(qint64 &month, qint64 &day, qint64 &year)
{
    convertDateToMDY(QDateTime::currentDateTime(), month, day, year);
}

void getCurrentTime(qint64 &hour, qint64 &minute, qint64 &second)
{
    convertDateToHMS(QDateTime::currentDateTime(), hour, minute, second);
}

} // namespace dravelin
