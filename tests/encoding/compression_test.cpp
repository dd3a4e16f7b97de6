// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <platform/zlibstream.h>
#include <support/printers.h>

#include <gmock/gmock.h>

#include <sys/resource.h>

#include <random>

using namespace dravelin;
using testing::HasSubstr;

namespace {

/// Bytes that hardly compress.
QByteArray noise(qsizetype size)
{
    std::mt19937 random(1);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random());
    return bytes;
}

/// What the exception says, or "none".
std::string failureOf(const QByteArray &stream, qsizetype maximumSize = std::numeric_limits<qsizetype>::max())
{
    try {
        (void)zlibDecompressed(stream, maximumSize);
        return "none";
    } catch (const Exception &exception) {
        return exception.what();
    }
}

} // namespace

TEST(Compression, GivesBytesBack)
{
    const QByteArray inputs[] = {"a",         QByteArray(10'000, '\0'), QByteArray(20'000'000, 'x'), noise(1),
                                 noise(1000), noise(5'000'000)};
    for (const QByteArray &bytes : inputs) {
        const QByteArray stream = zlibCompressed(bytes);
        EXPECT_TRUE(stream.startsWith("\x78\x9C")) << bytes.size();
        const QByteArray copy = zlibDecompressed(stream);
        EXPECT_TRUE(copy == bytes) << bytes.size();
        EXPECT_LE(copy.capacity(), copy.size() + 64) << "a result that keeps room it does not need";
        EXPECT_TRUE(detail::inflated(detail::deflated(bytes, 1000), bytes.size(), 77) == bytes) << "in small pieces";
    }
}

TEST(Compression, NothingStaysNothing)
{
    for (const auto function : {+[](const QByteArray &b) { return zlibCompressed(b); },
                                +[](const QByteArray &b) { return zlibDecompressed(b); }}) {
        EXPECT_TRUE(function(QByteArray()).isNull());
        EXPECT_TRUE(function("").isEmpty());
        EXPECT_FALSE(function("").isNull());
    }
    EXPECT_EQ(zlibDecompressed(QByteArray::fromHex("789c030000000001")), QByteArray("")); // a stream that holds nothing
}

TEST(Compression, IgnoresWhatFollowsTheStream)
{
    const QByteArray stream = zlibCompressed("first");
    EXPECT_EQ(zlibDecompressed(stream + "rest"), "first");
    EXPECT_EQ(zlibDecompressed(stream + zlibCompressed("second")), "first");
}

TEST(Compression, SaysWhatIsWrongWithAStream)
{
    const QByteArray stream = zlibCompressed(noise(1000));
    QByteArray damaged = stream;
    damaged.back() = char(damaged.back() ^ 1);
    const struct
    {
        QByteArray stream;
        const char *reason;
    } rows[] = {
        {stream.first(500), "is truncated after 500 bytes"},
        {stream.first(1), "is truncated after 1 bytes"},
        {stream.chopped(1), "is truncated after"},
        {zlibCompressed(QByteArray(10'000, 'x')).chopped(4), "is truncated after"},
        {damaged, "incorrect data check"},
        {"plain text, never compressed", "is broken before byte 2: incorrect header check"},
        {QByteArray::fromHex("78bb00000001"), "needs a preset dictionary"},
        {QByteArray::fromHex("789cff"), "is broken before byte 3: invalid block type"},
    };
    for (const auto &row : rows) {
        EXPECT_THAT(failureOf(row.stream), testing::StartsWith("NSMallocException: the zlib stream"));
        EXPECT_THAT(failureOf(row.stream), HasSubstr(row.reason));
    }
}

TEST(Compression, KeepsToTheBound)
{
    const QByteArray zeros = zlibCompressed(QByteArray(1000, '\0'));
    EXPECT_EQ(zlibDecompressed(zeros, 1000).size(), 1000);
    for (const qsizetype bound : {999, 1, 0}) {
        EXPECT_EQ(failureOf(zeros, bound),
                  "NSRangeException: the zlib stream holds more than " + std::to_string(bound) + " bytes");
    }
    EXPECT_EQ(zlibDecompressed(QByteArray::fromHex("789c030000000001"), 0), QByteArray(""));
    EXPECT_THAT(failureOf(zeros.chopped(1), 1000), HasSubstr("truncated"));
}

#if !defined(__SANITIZE_ADDRESS__)
TEST(CompressionDeathTest, OutOfMemoryIsAnException)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto tryIt = [] {
        const QByteArray stream = zlibCompressed(QByteArray(300'000'000, '\0'));
        const rlimit limit{400'000'000, 400'000'000};
        setrlimit(RLIMIT_AS, &limit);
        std::fputs(failureOf(stream).c_str(), stderr);
        std::_Exit(0);
    };
    EXPECT_EXIT(tryIt(), testing::ExitedWithCode(0), "NSMallocException: no memory for a buffer of [0-9]+ bytes");
}
#endif
