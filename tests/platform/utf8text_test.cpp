// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/utf8text.h>

#include <support/printers.h>

#include <QtCore/QStringConverter>

#include <gtest/gtest.h>
#include <hwy/targets.h>

#include <random>
#include <string>
#include <vector>

using namespace dravelin;

namespace {

/// Every test once for each kind of vectors that this processor has.
class Utf8Text : public testing::TestWithParam<int64_t>
{
protected:
    Utf8Text() { hwy::SetSupportedTargetsForTest(GetParam()); }
    ~Utf8Text() override { hwy::SetSupportedTargetsForTest(0); }
    Q_DISABLE_COPY_MOVE(Utf8Text)

    /// Some characters of one kind, and rarely bytes at the borders of what is valid.
    QByteArray randomPiece()
    {
        static const QByteArray borders(
            "\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xED\xEE\xEF\xF0\xF4\xF5\xF8\xFF");
        static const QStringList kinds{u"plain text "_qs, u"ä"_qs, u"€\uFEFF"_qs, u"𝄞"_qs, u"aäb€c𝄞"_qs};
        if (random() % 60 == 0)
            return borders.sliced(qsizetype(random()) % borders.size(), 1);
        return kinds[qsizetype(random()) % kinds.size()].toUtf8().repeated(qsizetype(random() % 6));
    }

    QByteArray randomBytes()
    {
        QByteArray bytes;
        for (auto pieces = random() % 30; pieces > 0; --pieces)
            bytes += randomPiece();
        if (!bytes.isEmpty() && random() % 8 == 0)
            bytes[qsizetype(random()) % bytes.size()] = char(random());
        return bytes;
    }

    std::mt19937 random{std::random_device()()};
};

void expectConvertedAsByQt(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8,
                           QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    const QString expected = decoder.decode(bytes);
    // Memory that ends where the bytes end, for the sanitizer to see.
    const std::vector<char> exact(bytes.begin(), bytes.end());
    std::vector<QChar> text(exact.size() + 1);
    const qsizetype units = detail::utf8ToUtf16(QByteArrayView(exact.data(), bytes.size()), text.data());
    ASSERT_EQ(units, decoder.hasError() ? -1 : expected.size()) << bytes.toHex().toStdString();
    ASSERT_TRUE(units < 0 || QStringView(text.data(), units) == expected) << bytes.toHex().toStdString();
}

} // namespace

TEST_P(Utf8Text, IsConvertedAsByQt)
{
    for (int round = 0; round < 20'000 && !HasFailure(); ++round)
        expectConvertedAsByQt(randomBytes());
    const QByteArray around(70, 'x');
    for (unsigned lead = 0x70; lead < 0x100; ++lead) {
        for (unsigned second = 0x70; second < 0x100 && !HasFailure(); ++second) {
            const QByteArray two = around + char(lead) + char(second);
            for (const QByteArray &rest : {QByteArray(), QByteArray("\x80"), QByteArray("\xBF\x80")})
                expectConvertedAsByQt(two + rest + around);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, Utf8Text, testing::ValuesIn([] {
                             std::vector<int64_t> each;
                             for (int64_t left = hwy::SupportedTargets(); left != 0; left &= left - 1)
                                 each.push_back(left & -left);
                             return each;
                         }()),
                         [](const auto &target) { return std::string(hwy::TargetName(target.param)); });
