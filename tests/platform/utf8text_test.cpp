// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/utf8text.h>

#include <support/vectortest.h>

#include <QtCore/QStringConverter>

using namespace dravelin;

using Utf8Text = VectorTest;

namespace {

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

TEST_P(Utf8Text, IsConvertedAsByQtWhicheverByteIsAnother)
{
    const QByteArray text =
        QByteArray("plain text, äöüß €日本語\uFEFF 𝄞😀😀 ").repeated(3); // at several places in vectors
    for (qsizetype at = 0; at < text.size() && !HasFailure(); ++at) {
        expectConvertedAsByQt(text.first(at));
        expectConvertedAsByQt(text.sliced(at));
        QByteArray changed = text;
        for (int byte = 0; byte < 256; ++byte) {
            changed[at] = char(byte);
            expectConvertedAsByQt(changed);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, Utf8Text, testing::ValuesIn(VectorTest::targets()), VectorTest::name);
