// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/propertylist.h>

#include <support/printers.h>

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimeZone>
#include <QtCore/QUrl>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

QDateTime utc(int year, int month, int day, int milliseconds = 0)
{
    return {QDate(year, month, day), QTime(23, 59, 58, milliseconds), QTimeZone::utc()};
}

QVariant nested(int levels)
{
    QVariant value = u"core"_s;
    for (int i = 0; i < levels; ++i)
        value = i % 2 ? QVariant(QVariantMap{{u"k"_s, value}}) : QVariant(QVariantList{value});
    return value;
}

QByteArray document(const QByteArray &body) { return "<plist>" + body + "</plist>"; }

QVariantMap ordinary()
{
    return {{u"text"_s, u" ä€😀 <&> \r\n\t"_s},
            {u"yes"_s, true},
            {u"big"_s, qlonglong(-1) << 40},
            {u"real"_s, 0.1},
            {u"date"_s, utc(2024, 2, 29)},
            {u"bytes"_s, QByteArray("\0\1\xff", 3)},
            {u"list"_s, QVariantList{u""_s, QVariantMap()}},
            {u"inf"_s, HUGE_VAL}};
}

} // namespace

TEST(PropertyList, GivesBackEqualValuesOfTheSameType)
{
    const QVariant rows[] = {
        u""_s,
        u" lead and trail\t\n"_s,
        u"\r\n \r"_s,
        u"a\0b"_s,
        u"\x1b[1m\x7f\x85\x2028\xfeff"_s,
        u"\xd800"_s,
        u"\xdc00\xd800"_s,
        u"\xffff\xfffe"_s,
        u"😀]]>&amp;"_s,
        u"$u:"_s,
        u"$u:0041"_s,
        u"$U:0041"_s,
        true,
        false,
        0LL,
        std::numeric_limits<qint64>::min(),
        std::numeric_limits<qint64>::max(),
        std::numeric_limits<quint64>::max(),
        0.1,
        -0.0,
        1.0,
        5e-324,
        1.7976931348623157e308,
        HUGE_VAL,
        -HUGE_VAL,
        utc(2024, 2, 29),
        utc(1, 1, 1, 7),
        utc(-44, 3, 15),
        utc(12345, 6, 7, 120),
        QByteArray(""),
        QByteArray("\0\xff\n", 3),
        QVariantList(),
        QVariantMap(),
        QVariantMap{{u""_s, u"empty key"_s}, {u"\0"_s, 1LL}, {u" <k>\r"_s, QVariantList{QVariantList(), false}}},
        nested(256)};
    for (const QVariant &row : rows) {
        QString error;
        const QByteArray data = propertyListData(row, &error);
        const QVariant copy = propertyListFromData(data, &error);
        EXPECT_EQ(copy, row) << data.toStdString() << error.toStdString();
        EXPECT_EQ(copy.typeId(), row.typeId()) << data.toStdString();
        EXPECT_EQ(propertyListData(copy), data); // tells -0.0 from 0.0, which == does not
    }
    EXPECT_TRUE(std::isnan(propertyListFromData(propertyListData(std::nan(""))).toDouble()));
}

TEST(PropertyList, ConvertsToTheStoredTypes)
{
    enum class Mode : quint8 { Last = 200 };
    const QDateTime east(QDate(2024, 1, 1), QTime(0, 30), QTimeZone(3600));
    const std::pair<QVariant, QVariant> rows[] = {
        {3, 3LL},
        {QVariant::fromValue(quint8(200)), 200LL},
        {QVariant::fromValue(-3L), -3LL},
        {7ULL, 7LL},
        {QVariant::fromValue(Mode::Last), 200LL},
        {0.1f, double(0.1f)},
        {east, QDateTime(QDate(2023, 12, 31), QTime(23, 30), QTimeZone::utc())},
        {QStringList{u"a"_s}, QVariantList{u"a"_s}},
        {QVariantHash{{u"a"_s, 1}}, QVariantMap{{u"a"_s, 1LL}}},
        {QVariantList{QString(), QByteArray()}, QVariantList{u""_s, QByteArray("")}}};
    for (const auto &[value, stored] : rows) {
        EXPECT_EQ(propertyListValue(value), stored);
        EXPECT_EQ(propertyListValue(value).typeId(), stored.typeId());
        EXPECT_EQ(propertyListFromData(propertyListData(value)).typeId(), stored.typeId());
    }
}

TEST(PropertyList, RefusesWhatItCannotHold)
{
    const std::pair<QVariant, QString> rows[] = {
        {QVariant(), u"a null value"_s},
        {QVariant::fromValue(nullptr), u"a null value"_s},
        {QVariantList{1, QVariant()}, u"a null value"_s},
        {QUrl(u"a:b"_s), u"a value of type QUrl"_s},
        {QVariantMap{{u"k"_s, QVariantList{QUrl()}}}, u"a value of type QUrl"_s},
        {QDateTime(), u"an invalid date"_s},
        {nested(257), u"lists and maps nested deeper than 256 levels"_s}};
    for (const auto &[value, cause] : rows) {
        QString error;
        EXPECT_TRUE(propertyListData(value, &error).isNull());
        EXPECT_EQ(error, cause);
    }
}

TEST(PropertyList, ReadsWhatOtherToolsWrite)
{
    const std::pair<const char *, QVariant> rows[] = {
        {"<integer> +0x1F </integer>", 31LL},
        {"<integer>-0x8000000000000000</integer>", std::numeric_limits<qint64>::min()},
        {"<real>+Infinity</real>", HUGE_VAL},

        {"<real>\n7 </real>", 7.0},
        {"<data>\n\tAAE\n\t=\n</data>", QByteArray("\0\1", 2)},
        {"<string>a<!-- c -->b<![CDATA[<&]]></string>", u"ab<&"_s},
        {"<true></true>", true},
        {"<string>$u:12</string>", u"$u:12"_s},
        {"<string>$u:0x41</string>", u"$u:0x41"_s},
        {"<dict><key>k</key><true/><key>k</key><false/></dict>", QVariantMap{{u"k"_s, false}}},
        {"<date>2024-02-29T23:59:58.5Z</date>", utc(2024, 2, 29, 500)}};
    for (const auto &[body, value] : rows) {
        QString error;
        EXPECT_EQ(propertyListFromData(document(body), &error), value) << body << error.toStdString();
    }
    EXPECT_EQ(propertyListFromData("<?xml version=\"1.0\"?><!DOCTYPE plist SYSTEM \"x\"><plist><true/></plist>"),
              QVariant(true));
}

TEST(PropertyList, ReportsLineAndCause)
{
    QByteArray deep;
    for (int i = 0; i < 100'000; ++i)
        deep += "<array>";
    const std::pair<QByteArray, const char *> rows[] = {
        {"", "line 1"},
        {"{}", "line 1"},
        {"<dict/>", "not a property list"},
        {document(""), "no value"},
        {document("<true/>\n<true/>"), "line 2: more than one value"},
        {document("<true/>") + "x", "line 1"},
        {document("<dict>\n<key>a</key>\n</dict>"), "line 3: key \"a\" without a value"},
        {document("<dict><true/></dict>"), "true in place of a key"},
        {document("<array>x</array>"), "text between elements"},
        {document("<string><b/></string>"), "element or entity b inside text"},
        {document("<uuid/>"), "unknown element uuid"},
        {document("<integer>18446744073709551616</integer>"), "malformed integer \"18446744073709551616\""},
        {document("<integer>-9223372036854775809</integer>"), "malformed integer"},
        {document("<integer>+-1</integer>"), "malformed"},
        {document("<integer/>"), "malformed integer"},
        {document("<real>1,5</real>"), "malformed real"},
        {document("<real>1e999</real>"), "malformed real"},
        {document("<date>2023-02-29T00:00:00Z</date>"), "malformed date"},
        {document("<date>now</date>"), "malformed date"},
        {document("<data>A</data>"), "malformed data"},
        {document("<data>A*==</data>"), "malformed data"},
        {document("<true>1</true>"), "text inside a truth value"},
        {document(deep), "nested deeper than 256 levels"},
        {document("<string>\xff</string>"), "line 1"},
        {propertyListData(ordinary()).chopped(9), "line "},
        {"<!DOCTYPE plist [<!ENTITY a 'x'>]><plist><string>&a;</string></plist>", "declares entities"},
        {"<!DOCTYPE plist SYSTEM 'x'><plist><string>&a;</string></plist>", "line 1"}};
    for (const auto &[data, cause] : rows) {
        QString error;
        EXPECT_FALSE(propertyListFromData(data, &error).isValid()) << data.left(200).toStdString();
        EXPECT_TRUE(error.startsWith(u"line "_s) && error.contains(QLatin1String(cause)))
            << error.toStdString() << " for " << data.left(200).toStdString();
    }
}

// Reads our file, checks it against values of its own, and writes it again for us.
TEST(PropertyList, IsTheFormThatPythonReadsAndWrites)
{
    if (QStandardPaths::findExecutable(u"python3"_s).isEmpty())
        GTEST_SKIP() << "no python3";
    const char script[] = R"(
import datetime, plistlib, sys
with open(sys.argv[1], 'rb') as f: v = plistlib.load(f)
assert v == {'text': ' ä€😀 <&> \r\n\t', 'yes': True, 'big': -1 << 40, 'real': 0.1, 'inf': float('inf'), 'list': ['', {}],
             'date': datetime.datetime(2024, 2, 29, 23, 59, 58), 'bytes': b'\0\1\xff'}, v
v['text'] = v['text'].replace('\r', '')  # which it would write bare
with open(sys.argv[1], 'wb') as f: plistlib.dump(v, f)
)";
    const QTemporaryDir directory;
    QFile file(directory.filePath(u"p.plist"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.write(propertyListData(ordinary()));
    file.close();
    QProcess python;
    python.start(u"python3"_s, {u"-c"_s, QString::fromUtf8(script), file.fileName()});
    ASSERT_TRUE(python.waitForFinished());
    ASSERT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    QVariantMap expected = ordinary();
    expected[u"text"_s] = u" ä€😀 <&> \n\t"_s;
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(propertyListFromData(file.readAll()), QVariant(expected));
}
