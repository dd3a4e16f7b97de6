// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <support/printers.h>

#include <gtest/gtest.h>

#include <optional>
#include <random>

using namespace dravelin;

namespace {

/// The rules character by character, as slowly as they can be written.
std::optional<QByteArray> decodedNaively(const QString &text)
{
    const QByteArray alphabet(_base64EncodingTable, 64);
    for (const QChar c : text) {
        if (c.unicode() > 127)
            return {};
    }
    QString bits;
    int accepted = 0;
    for (const QChar c : text.left(text.contains(QChar(0)) ? text.indexOf(QChar(0)) : text.size())) {
        if (QStringLiteral("\t\n\f\r ").contains(c))
            continue;
        if (c == u'=') {
            if (accepted % 4 == 1)
                return {};
            continue;
        }
        const auto value = alphabet.indexOf(c.toLatin1());
        if (value < 0)
            return {};
        bits += QStringLiteral("%1").arg(value, 6, 2, QLatin1Char('0'));
        ++accepted;
    }
    QByteArray bytes("");
    for (; bits.size() >= 8; bits.remove(0, 8))
        bytes.append(char(bits.left(8).toInt(nullptr, 2)));
    return bytes;
}

QByteArray randomBytes(std::mt19937 &random, int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random());
    return bytes;
}

} // namespace

TEST(Base64, DecodesLeniently)
{
    const struct
    {
        QString text;
        QByteArray bytes;
    } rows[] = {
        {QStringLiteral(""), ""},
        {QStringLiteral("QQ=="), "A"},
        {QStringLiteral("QQ"), "A"},
        {QStringLiteral("QQ==="), "A"},
        {QStringLiteral("Q Q\r\n=="), "A"},
        {QStringLiteral("=QQ"), "A"},
        {QStringLiteral("QU=FB"), "AAA"},
        {QStringLiteral("QUFBQ"), "AAA"},
        {QStringLiteral("QUFB\fQU\tFB"), "AAAAAA"},
        {QStringLiteral("QUFBQUE"), "AAAAA"},
        {QStringLiteral(" \n"), ""},
        {QStringLiteral("QUFB") + QChar(0) + QStringLiteral("-!"), "AAA"},
        {QString(QChar(0)), ""},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(decodeBase64ToData(row.text), row.bytes) << row.text.toStdString();
        EXPECT_FALSE(decodeBase64ToData(row.text).isNull()) << row.text.toStdString();
    }
}

TEST(Base64, RefusesEverythingElse)
{
    for (const char *text :
         {"Q=Q", "Q=", "QUFBQ=", "Q==", "QQ-", "QUFB\vQUFB", "QUF_", ".", "QUF\u00E9", "\u4141\u4141QU"})
        EXPECT_TRUE(decodeBase64ToData(QString::fromUtf8(text)).isNull()) << text;
    EXPECT_TRUE(decodeBase64ToData(QString()).isNull());
    EXPECT_TRUE(decodeBase64ToData(QStringLiteral("QQ") + QChar(0) + QChar(0xE9)).isNull());
}

TEST(Base64, EncodesNothingAsAbsent)
{
    EXPECT_TRUE(encodeBase64WithData(QByteArray()).isNull());
    EXPECT_TRUE(encodeBase64WithData(QByteArray("")).isNull());
    EXPECT_TRUE(encodeBase64WithString(QString()).isNull());
    EXPECT_TRUE(encodeBase64WithString(QStringLiteral("")).isNull());
}

TEST(Base64, CarriesText)
{
    EXPECT_EQ(encodeBase64WithString(QStringLiteral("\u00E9")), QStringLiteral("w6k="));
    EXPECT_EQ(decodeBase64ToString(QStringLiteral("w6k=")), QStringLiteral("\u00E9"));
    EXPECT_TRUE(decodeBase64ToString(QStringLiteral("/w==")).isNull()) << "not UTF-8";
    EXPECT_TRUE(decodeBase64ToString(QStringLiteral("-")).isNull());
    EXPECT_EQ(decodeBase64ToString(QStringLiteral("")), QStringLiteral(""));
}

TEST(Base64, EncodesAsTheStandardSays)
{
    const auto seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    EXPECT_EQ(encodeBase64WithData(QByteArray(1, '\0')), QStringLiteral("AA=="));
    for (int size = 1; size < 200; ++size) {
        const QByteArray bytes = randomBytes(random, size);
        ASSERT_EQ(encodeBase64WithData(bytes), QString::fromLatin1(bytes.toBase64()));
        ASSERT_EQ(decodeBase64ToData(encodeBase64WithData(bytes)), bytes);
    }
}

TEST(Base64, DecodesRandomTextAsTheRulesSay)
{
    const auto seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const QString rare = QStringLiteral("==  \t\n\f\r") + QChar(0) + QStringLiteral("\v-_.\u00E9\u0141");
    for (int round = 0; round < 30'000; ++round) {
        QString text = QStringLiteral("");
        for (auto count = random() % 40; count > 0; --count) {
            const bool plain = random() % 16 != 0;
            text += plain ? QChar(QLatin1Char(_base64EncodingTable[random() % 64])) : rare[random() % rare.size()];
        }
        const auto expected = decodedNaively(text);
        const QByteArray decoded = decodeBase64ToData(text);
        ASSERT_EQ(decoded.isNull(), !expected) << text.toStdString();
        ASSERT_EQ(decoded, expected.value_or(QByteArray())) << text.toStdString();
    }
}

TEST(Base64, ClassesEveryCharacter)
{
    const QByteArray alphabet(_base64EncodingTable, 64);
    EXPECT_EQ(alphabet, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
    for (int code = 0; code < 256; ++code) {
        const auto value = alphabet.indexOf(char(code));
        const bool space = QByteArray("\t\n\f\r ").contains(char(code));
        EXPECT_EQ(_base64DecodingTable[code], space ? -1 : value < 0 ? -2 : value) << code;
    }
}
