// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <support/printers.h>

#include <gtest/gtest.h>

using namespace dravelin;

TEST(Texts, TrimWhiteSpace)
{
    EXPECT_EQ(trimWhiteSpace(QStringLiteral(" \t\r\n\u00A0\u2028\u200Ba b\u3000\u200B\n")), QStringLiteral("a b"));
    EXPECT_EQ(trimWhiteSpace(QStringLiteral("ab")), QStringLiteral("ab"));
    for (const auto &blank : {QStringLiteral(""), QStringLiteral(" \n ")}) {
        EXPECT_EQ(trimWhiteSpace(blank), QStringLiteral(""));
        EXPECT_FALSE(trimWhiteSpace(blank).isNull());
    }
    EXPECT_TRUE(trimWhiteSpace(QString()).isNull());
}

TEST(Texts, LeftAndRight)
{
    const struct
    {
        qint64 count;
        const char *left, *right;
    } rows[] = {{0, "", "abc"}, {1, "a", "bc"}, {3, "abc", ""}, {10, "abc", ""}, {-1, "abc", ""}};
    for (const auto &row : rows) {
        EXPECT_EQ(leftString(QStringLiteral("abc"), row.count), QLatin1String(row.left)) << row.count;
        EXPECT_EQ(rightString(QStringLiteral("abc"), row.count), QLatin1String(row.right)) << row.count;
    }
    EXPECT_FALSE(rightString(QStringLiteral("abc"), 3).isNull());
    EXPECT_TRUE(rightString(QString(), 0).isNull());
    EXPECT_TRUE(isEmpty(QStringLiteral("")));
    EXPECT_FALSE(isEmpty(QStringLiteral(" ")));
}

TEST(Texts, NormalizeLineEndings)
{
    const char *const Absent = nullptr;
    const struct
    {
        const char *text;
        const char *results[4]; // modes 0 to 2, and 7
    } rows[] = {
        {"a\rb", {"a\rb", "a\r\nb", "a\nb", Absent}},
        {"a\nb\n", {"a\rb\r", "a\r\nb\r\n", "a\nb\n", Absent}},
        {"a\r\nb", {"a\r\nb", "a\r\nb", "a\r\nb", Absent}},
        {"a\rb\r\nc\n", {"a\rb\r\nc\n", "a\r\nb\r\n\nc\n", "a\nb\n\nc\n", Absent}},
        {"a\nb\r\nc\r", {"a\nb\r\nc\r", "a\nb\r\nc\r", "a\nb\r\nc\r", Absent}},
        {"\r", {"\r", "\r\n", "\n", Absent}},
        {"ab", {"ab", "ab", "ab", "ab"}},
        {"", {"", "", "", ""}},
    };
    constexpr qint32 Modes[] = {0, 1, 2, 7};
    for (const auto &row : rows) {
        for (int i = 0; i < 4; ++i) {
            const QString result = normalizeLineEndings(QString::fromLatin1(row.text), Modes[i]);
            EXPECT_EQ(result, QString::fromLatin1(row.results[i])) << row.text << " mode " << Modes[i];
            EXPECT_EQ(result.isNull(), row.results[i] == Absent) << row.text << " mode " << Modes[i];
        }
    }
    EXPECT_TRUE(normalizeLineEndings(QStringLiteral("a\n"), -1).isNull());
}

TEST(Texts, SplitIntoLines)
{
    const auto lines = [](const char *text) { return splitIntoLines(QString::fromLatin1(text)).join(u'|'); };
    EXPECT_EQ(lines("a\nb"), QStringLiteral("a|b"));
    EXPECT_EQ(lines("a\rb\r"), QStringLiteral("a|b|"));
    EXPECT_EQ(lines("a\r\nb"), QStringLiteral("a|\nb"));
    EXPECT_EQ(lines("a\rb\nc"), QStringLiteral("a|b\nc"));
    EXPECT_EQ(splitIntoLines(QStringLiteral("")), QStringList(QString()));
    EXPECT_TRUE(splitIntoLines(QString()).isEmpty());
}

TEST(Texts, StripString)
{
    const struct
    {
        QString text, characters, result;
    } rows[] = {
        {QStringLiteral("a1 b2"), QStringLiteral("0123456789"), QStringLiteral("12")},
        {QStringLiteral("a b\nc\u200Bd"), QStringLiteral("abcd \n\u200B"), QStringLiteral("abcd")},
        {QStringLiteral("\U0001F600\U0001F601x"), QStringLiteral("\U0001F601"), QStringLiteral("\U0001F601")},
        {QStringLiteral("\u00E9t\u00E9"), QStringLiteral("\u00E9"), QStringLiteral("\u00E9\u00E9")},
        {QStringLiteral("abc"), QString(), QStringLiteral("")},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(stripString(row.text, row.characters), row.result) << row.text.toStdString();
        EXPECT_FALSE(stripString(row.text, row.characters).isNull());
    }
    EXPECT_EQ(unichar(0x20AC), QStringLiteral("\u20AC"));
    EXPECT_EQ(unichar(0).size(), 1);
}

TEST(Dumps, EndEveryEntry)
{
    EXPECT_EQ(dumpAllKeys({{QStringLiteral("b"), 1}, {QStringLiteral("a"), QVariant()}}), QStringLiteral("a\rb\r"));
    EXPECT_EQ(dump(QByteArray("\x0A\xFF\0", 3)), QStringLiteral("0A FF 00 "));
    EXPECT_FALSE(dumpAllKeys({}).isNull());
    EXPECT_EQ(dump({}), QStringLiteral(""));
}
