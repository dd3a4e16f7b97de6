// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <encoding/base64_reference.h>
#include <support/printers.h>
#include <support/vectortest.h>

#include <random>

using namespace dravelin;

namespace {

class Base64Fast : public VectorTest
{
protected:
    QByteArray randomBytes(qsizetype size)
    {
        QByteArray bytes(size, Qt::Uninitialized);
        for (char &byte : bytes)
            byte = char(random());
        return bytes;
    }

    /// Lines of one length but for the rare one that is not, with the rare character that does not belong there.
    QString randomText()
    {
        static const QStringList separators{u"\n"_qs, u"\r\n"_qs, u"\n"_qs, u" \t "_qs, u"="_qs, u""_qs};
        const QString separator = separators[qsizetype(random() % separators.size())];
        const auto length = random() % 3 ? 76 : 4 * (random() % 40), lines = random() % 40;
        QString text = u""_qs;
        for (unsigned line = 0; line < lines; ++line) {
            const auto bytes = qsizetype(length / 4 * 3) - (random() % 30 == 0 ? qsizetype(random() % 5) : 0);
            text += detail::encodeBase64Reference(randomBytes(std::max<qsizetype>(bytes, 0))) + separator;
        }
        if (!text.isEmpty() && random() % 4 == 0)
            text[qsizetype(random() % text.size())] = QChar(char16_t(random() % 5 ? random() % 128 : random()));
        text.chop(std::min<qsizetype>(qsizetype(random() % 5), text.size()));
        return text;
    }

    std::mt19937 random{std::random_device()()};
};

void expectDecodedAsReference(const QString &text)
{
    const QByteArray expected = detail::decodeBase64Reference(text), decoded = decodeBase64ToData(text);
    ASSERT_EQ(decoded.isNull(), expected.isNull()) << text.toStdString();
    ASSERT_EQ(decoded, expected) << text.toStdString();
    if (QString::fromLatin1(text.toLatin1()) != text)
        return;
    // Vectors end where their memory ends, for the sanitizer to see.
    const QByteArray latin1 = text.toLatin1();
    const std::vector<char> exact(latin1.begin(), latin1.end());
    std::vector<char> room(std::size_t(decodedBase64Capacity(latin1.size())));
    const qsizetype size = decodeBase64Into(room, QByteArrayView(exact.data(), qsizetype(exact.size())));
    ASSERT_EQ(size, expected.isNull() ? -1 : expected.size()) << text.toStdString();
    ASSERT_EQ(QByteArrayView(room.data(), std::max<qsizetype>(size, 0)), expected) << text.toStdString();
}

} // namespace

TEST_P(Base64Fast, EncodesAsTheReference)
{
    for (qsizetype size = 0; size < 700; ++size) {
        const QByteArray bytes = randomBytes(size);
        const QString expected = detail::encodeBase64Reference(bytes);
        ASSERT_EQ(encodeBase64WithData(bytes), expected) << size;
        ASSERT_EQ(encodeBase64ToBytes(bytes), expected.toLatin1()) << size;
        std::vector<char> exact(std::size_t(encodedBase64Size(size)));
        ASSERT_EQ(encodeBase64Into(exact, std::vector<char>(bytes.begin(), bytes.end())), expected.size());
        ASSERT_EQ(QByteArrayView(exact.data(), expected.size()), expected.toLatin1());
    }
}

TEST_P(Base64Fast, FindsEveryFaultAtEveryPlace)
{
    const QString text = detail::encodeBase64Reference(randomBytes(231));
    for (qsizetype place = 0; place < text.size(); ++place) {
        for (char32_t code = 0; code < 0x200; code += place % 7 ? 13 : 1) {
            QString changed = text;
            changed[place] = QChar(char16_t(code < 0x180 ? code : code << 7 | '4'));
            expectDecodedAsReference(changed);
            if (HasFatalFailure())
                return;
        }
    }
}

TEST_P(Base64Fast, DecodesLinesAsTheReference)
{
    for (int round = 0; round < 4000 && !HasFatalFailure(); ++round)
        expectDecodedAsReference(randomText());
}

INSTANTIATE_TEST_SUITE_P(Targets, Base64Fast, testing::ValuesIn(VectorTest::targets()), VectorTest::name);

TEST(Base64Room, IsChecked)
{
    std::vector<char> room(3);
    EXPECT_THROW(encodeBase64Into(room, "A"), Exception);
    EXPECT_THROW((void)decodeBase64Into(room, "QUFBQ"), Exception);
    EXPECT_EQ(decodeBase64Into(room, "QUFB"), 3);
}

/// Results so large that they go past the caches, by either way to do so.
class Base64Large : public Base64Fast
{};

TEST_P(Base64Large, GoesPastTheCachesUnchanged)
{
    const QByteArray bytes = randomBytes((34 << 20) + 1);
    const QByteArray text = encodeBase64ToBytes(bytes);
    ASSERT_EQ(text, bytes.toBase64());
    ASSERT_EQ(decodeBase64FromBytes(text), bytes);

    QByteArray lines = "\n";
    for (qsizetype i = 0; i < text.size(); i += 76)
        lines.append(QByteArrayView(text).sliced(i, std::min<qsizetype>(76, text.size() - i))).append("\r\n");
    lines.insert(lines.size() / 2, ' ');
    ASSERT_EQ(decodeBase64FromBytes(lines), bytes);
    QByteArray unseparated = lines;
    unseparated[unseparated.indexOf('\n', unseparated.size() / 3)] = 'A';
    EXPECT_EQ(decodeBase64FromBytes(unseparated), detail::decodeBase64Reference(QString::fromLatin1(unseparated)));
    lines[lines.size() / 3] = '-';
    EXPECT_TRUE(decodeBase64FromBytes(lines).isNull());
}

INSTANTIATE_TEST_SUITE_P(Targets, Base64Large,
                         testing::Values(hwy::SupportedTargets(), hwy::SupportedTargets() & ~HWY_AVX3_DL));
