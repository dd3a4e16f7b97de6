// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>
#include <dravelin/platform/geometry.h>

#include <support/decimalcomma.h>
#include <support/logrecorder.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <limits>

using namespace dravelin;
using namespace Qt::StringLiterals;

TEST(Coder, KeepsFieldsInTheirForms)
{
    enum class Kind : qint8 { Last = -3 };
    const DecimalComma comma;
    const auto archiver = createKeyedArchiver();
    EXPECT_EQ(archiver->outputFormat(), 100);
    encodeString(*archiver, u"a\r\nä"_s, u"text"_s);
    encodeString(*archiver, {}, u"absent"_s);
    encodeString(*archiver, u""_s, u"empty"_s);
    encodeEnum(*archiver, Kind::Last, u"kind"_s);
    encodeEnum(*archiver, std::numeric_limits<qint64>::min(), u"least"_s);
    encodeRange(*archiver, {3, std::numeric_limits<quint64>::max()}, u"range"_s);
    encodeColor(*archiver, Color::calibratedRgb(0.0625, 0.1875, -2, 0.00049), u"color"_s);
    encodeColor(*archiver, Color(), u"none"_s);
    const auto unarchiver = createKeyedUnarchiver(QString::fromUtf8(archiver->encodedData()));
    ASSERT_TRUE(unarchiver);
    EXPECT_EQ(decodeStringForKey(*unarchiver, u"text"_s), u"a\r\nä"_s);
    EXPECT_TRUE(decodeStringForKey(*unarchiver, u"absent"_s).isNull());
    EXPECT_EQ(decodeStringForKey(*unarchiver, u"empty"_s), u""_s);
    EXPECT_FALSE(decodeStringForKey(*unarchiver, u"empty"_s).isNull());
    EXPECT_EQ(decodeEnumForKey<Kind>(*unarchiver, u"kind"_s), Kind::Last);
    EXPECT_EQ(decodeEnumForKey(*unarchiver, u"least"_s), std::numeric_limits<qint64>::min());
    EXPECT_EQ(decodeRangeForKey(*unarchiver, u"range"_s), (Range{3, std::numeric_limits<quint64>::max()}));
    EXPECT_EQ(decodeStringForKey(*unarchiver, u"range"_s), u"{3, 18446744073709551615}"_s);
    EXPECT_EQ(decodeStringForKey(*unarchiver, u"color"_s), u"0.062 0.188 -2.000 0.000"_s);
    EXPECT_EQ(decodeColorForKey(*unarchiver, u"color"_s), Color::srgb(0.062f, 0.188f, -2, 0));
    EXPECT_EQ(decodeColorForKey(*unarchiver, u"none"_s), Color::srgb(0, 0, 0, 0));
    EXPECT_TRUE(decodeStringForKey(*unarchiver, u"kind"_s).isNull()); // of another kind
    EXPECT_EQ(decodeRangeForKey(*unarchiver, u"kind"_s), Range());
}

TEST(Coder, TextThatIsNoArchiveHasNoUnarchiver)
{
    const LogRecorder log;
    for (const QString &text : {QString(), u"{}"_s, u"<plist><true/></plist>"_s})
        EXPECT_FALSE(createKeyedUnarchiver(text)) << text.toStdString();
    EXPECT_EQ(log.lines().size(), 3);
}

TEST(Coder, RangesAreTheFirstTwoNumbers)
{
    const std::pair<QString, Range> rows[] = {
        {u"{3, 4}"_s, {3, 4}},
        {u"7"_s, {7, 0}},
        {{}, {}},
        {u"ä12b 5,6"_s, {12, 5}},
        {u"{99999999999999999999, 1}"_s, {std::numeric_limits<quint64>::max(), 1}}};
    for (const auto &[text, range] : rows)
        EXPECT_EQ(NSRangeFromString(text), range) << text.toStdString();
}
