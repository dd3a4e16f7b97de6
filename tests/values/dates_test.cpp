// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values.h>

#include <QtCore/QTimeZone>

#include <gtest/gtest.h>

#include <ctime>
#include <tuple>

using namespace dravelin;

namespace {

constexpr qint64 Undefined = 9223372036854775807;
using Triple = std::tuple<qint64, qint64, qint64>;

Triple monthDayYear(const QDateTime &date)
{
    qint64 month = -1, day = -1, year = -1;
    convertDateToMDY(date, month, day, year);
    return {month, day, year};
}

class TimeZone
{
public:
    explicit TimeZone(const char *name) : m_previous(qgetenv("TZ")) { set(name); }
    ~TimeZone() { set(m_previous); }
    Q_DISABLE_COPY_MOVE(TimeZone)

private:
    static void set(const QByteArray &name)
    {
        if (name.isNull())
            qunsetenv("TZ");
        else
            qputenv("TZ", name);
        tzset();
    }
    QByteArray m_previous;
};

QDateTime utc(int year, int month, int day, int hour)
{
    return QDateTime(QDate(year, month, day), QTime(hour, 0), Qt::UTC);
}

} // namespace

TEST(ConvertDateToMDY, IsInTheUsersTimeZone)
{
    const TimeZone east("IST-5:30");
    EXPECT_EQ(monthDayYear(utc(2025, 12, 31, 18)), Triple(12, 31, 2025));
    EXPECT_EQ(monthDayYear(utc(2025, 12, 31, 19)), Triple(1, 1, 2026));
    const TimeZone west("PST8");
    EXPECT_EQ(monthDayYear(utc(2026, 3, 1, 7)), Triple(2, 28, 2026));
}

TEST(ConvertDateToMDY, IsJulianBeforeTheReform)
{
    const TimeZone greenwich("UTC0");
    EXPECT_EQ(monthDayYear(utc(1582, 10, 15, 12)), Triple(10, 15, 1582));
    EXPECT_EQ(monthDayYear(utc(1582, 10, 14, 12)), Triple(10, 4, 1582));
    EXPECT_EQ(monthDayYear(utc(1066, 10, 20, 12)), Triple(10, 14, 1066));
    EXPECT_EQ(monthDayYear(utc(-44, 3, 13, 12)), Triple(3, 15, 44));
}

TEST(ConvertDateToMDY, IsUndefinedWithoutADate)
{
    EXPECT_EQ(monthDayYear(QDateTime()), Triple(Undefined, Undefined, Undefined));
}

TEST(ConvertDateToHMS, IsAlwaysUndefined)
{
    for (const QDateTime &date : {utc(2026, 1, 2, 3), QDateTime()}) {
        qint64 hour = 0, minute = 0, second = 0;
        convertDateToHMS(date, hour, minute, second);
        EXPECT_EQ(Triple(hour, minute, second), Triple(Undefined, Undefined, Undefined));
    }
    qint64 hour = 0, minute = 0, second = 0;
    getCurrentTime(hour, minute, second);
    EXPECT_EQ(Triple(hour, minute, second), Triple(Undefined, Undefined, Undefined));
}

TEST(GetCurrentDate, IsToday)
{
    const auto asTriple = [](QDate date) { return Triple(date.month(), date.day(), date.year()); };
    qint64 month = 0, day = 0, year = 0;
    const QDate before = QDate::currentDate();
    getCurrentDate(month, day, year);
    const Triple now(month, day, year);
    EXPECT_TRUE(now == asTriple(before) || now == asTriple(QDate::currentDate())) << month << '/' << day << '/' << year;
}
