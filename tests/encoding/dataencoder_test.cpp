// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gmock/gmock.h>

#include <QtCore/QProcess>

#include <random>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

QByteArray blobOf(const QByteArray &records) { return zlibCompressed(records).toBase64(); }
QByteArray recordsOf(const DataEncoder &encoder)
{
    return zlibDecompressed(QByteArray::fromBase64(encoder.encodeData()));
}

/// "key=value" of everything, with "?" for absent values.
QStringList contents(const DataEncoder &encoder)
{
    QStringList result;
    for (const QString &key : encoder.keys()) {
        const QString value = encoder.getString(key);
        result.append(key + u'=' + (value.isNull() ? u"?"_s : value));
    }
    EXPECT_EQ(encoder.count(), result.size());
    return result;
}

} // namespace

TEST(DataEncoder, StoresTextWhateverTheType)
{
    DataEncoder encoder;
    encoder.addString(u"text"_s, u" -12 apples"_s);
    encoder.addInteger(u"large"_s, 4294967297);
    encoder.addInteger(u"least"_s, std::numeric_limits<qint32>::min());
    encoder.addInteger(u"beyond"_s, 2147483648);
    encoder.addBool(u"yes"_s, true);
    encoder.addBool(u"no"_s, false);
    const struct
    {
        QString key, text;
        qint64 integer;
        bool boolean;
    } rows[] = {{u"text"_s, u" -12 apples"_s, -12, true},
                {u"large"_s, u"1"_s, 1, true},
                {u"least"_s, u"-2147483648"_s, -2147483648, true},
                {u"beyond"_s, u"-2147483648"_s, -2147483648, true},
                {u"yes"_s, u"YES"_s, 0, true},
                {u"no"_s, u"NO"_s, 0, false},
                {u"missing"_s, u""_s, 0, false}};
    for (const auto &row : rows) {
        EXPECT_EQ(encoder.getString(row.key), row.text);
        EXPECT_FALSE(encoder.getHandler(row.key).isNull());
        EXPECT_EQ(encoder.getInteger(row.key), row.integer) << qPrintable(row.key);
        EXPECT_EQ(encoder.getBool(row.key), row.boolean) << qPrintable(row.key);
    }
}

TEST(DataEncoder, WritesRecordsInTheOrderOfTheirKeys)
{
    DataEncoder encoder;
    EXPECT_EQ(encoder.encodeData(), QByteArray(""));
    encoder.addString(u"b"_s, u"old"_s);
    encoder.addString(u"ä"_s, u"x"_s);
    encoder.addString(u"gone"_s, u"x"_s);
    const DataEncoder before = encoder;
    encoder.addString(u"b"_s, u"A"_s);
    encoder.addString(u"gone"_s, u""_s);
    encoder.addBool(QString(), true);
    EXPECT_EQ(recordsOf(encoder), "b,QQ==\rä,eA==\r,WUVT\r");
    EXPECT_EQ(recordsOf(before), "b,b2xk\rä,eA==\rgone,eA==\r");
    EXPECT_EQ(DataEncoder::encodeDataEntry(u"Ä"_s), u"w4Q="_s);
    EXPECT_TRUE(DataEncoder::encodeDataEntry(u""_s).isNull());
    EXPECT_EQ(DataEncoder::decodeDataEntry(u"w4Q"_s), u"Ä"_s);
    EXPECT_TRUE(DataEncoder::decodeDataEntry(u"w4-"_s).isNull());
}

TEST(DataEncoder, ReadsRecordsLeniently)
{
    const struct
    {
        const char *records;
        QStringList contents;
        const char *rewritten;
    } rows[] = {
        {"a,QQ==\rb,Qg\r", {u"a=A"_s, u"b=B"_s}, "a,QQ==\rb,Qg\r"},
        {"a,QQ==\r\r\rb,Qg==", {u"a=A"_s, u"b=B"_s}, "a,QQ==\rb,Qg==\r"},
        {"a,QQ==,Qg==\r", {u"a="_s}, "a,\r"},
        {"a\rb,Qg==\r", {u"a="_s, u"b=B"_s}, "a,\rb,Qg==\r"},
        {"abc\r\r,,\r", {u"abc="_s, u"="_s}, "abc,\r,\r"},
        {"a,QQ==\rb,Qg==\ra,Qg==\r", {u"a=B"_s, u"b=B"_s}, "a,Qg==\rb,Qg==\r"},
        {"a,QQ==\ra", {u"a="_s}, "a,\r"},
        {"a,!\rb,/w==\rc,ä\r", {u"a=?"_s, u"b=?"_s, u"c=?"_s}, "a,!\rb,/w==\rc,ä\r"},
        {",QQ==\r", {u"=A"_s}, ",QQ==\r"},
        {"a\nb,Q Q\r", {u"a\nb=A"_s}, "a\nb,Q Q\r"},
    };
    for (const auto &row : rows) {
        const LogRecorder log;
        const auto encoder = DataEncoder::initWithData(blobOf(row.records));
        EXPECT_EQ(contents(encoder), row.contents) << row.records;
        EXPECT_EQ(log.lines().size(), row.contents.filter(u"?"_s).size());
        EXPECT_EQ(recordsOf(encoder), row.rewritten);
    }
}

TEST(DataEncoder, KeysThatDoNotSurvive)
{
    DataEncoder encoder;
    encoder.addString(u"a,b"_s, u"1"_s);
    encoder.addString(u"c\rd"_s, u"2"_s);
    encoder.addString(u"e,f"_s, u"line\nfeed, comma\r€"_s);
    EXPECT_EQ(encoder.getString(u"a,b"_s), u"1"_s);
    EXPECT_EQ(contents(DataEncoder::initWithData(encoder.encodeData())),
              QStringList({u"a="_s, u"c="_s, u"d=2"_s, u"e="_s}));

    const LogRecorder log;
    encoder.addString(QString(QChar(0xD800)), u"x"_s);
    EXPECT_FALSE(encoder.contains(QString(QChar(0xD800))));
    EXPECT_FALSE(encoder.contains(u""_s));
    encoder.addString(u"a,b"_s, QString(QChar(0xD800)));
    EXPECT_FALSE(encoder.contains(u"a,b"_s));
    EXPECT_EQ(log.lines().size(), 2);
}

TEST(DataEncoder, ABrokenBlobLeavesNothing)
{
    const QByteArray blob = blobOf("a,QQ==\r");
    const struct
    {
        QByteArray blob;
        const char *reason; ///< of the log line; none is needed for nothing
    } rows[] = {{"", nullptr},
                {QByteArray(), nullptr},
                {"no-Base64", "9 bytes are not Base64"},
                {blob + "\xFF", "are not Base64"},
                {blob.first(8), "is truncated after 6 bytes"},
                {QByteArray("plain").toBase64(), "incorrect header check"},
                {blobOf("a,QQ==\rb\xFF,\r"), "are not UTF-8"},
                {blobOf(QByteArray(2000, 'x')), "more than 1000 bytes"}};
    for (const auto &row : rows) {
        const LogRecorder log;
        DataEncoder encoder;
        encoder.addBool(u"old"_s, true);
        encoder.decodeData(row.blob, 1000);
        EXPECT_TRUE(encoder.isEmpty()) << row.blob.constData();
        ASSERT_EQ(log.lines().size(), row.reason ? 1 : 0) << row.blob.constData();
        EXPECT_THAT(log.lines().value(0).toStdString(), testing::HasSubstr(row.reason ? row.reason : ""));
    }
    QByteArray lines = blobOf("ab,QQ==\r");
    ASSERT_TRUE(lines.endsWith("=="));
    lines.chop(2);
    for (qsizetype i = lines.size(); i > 0; i -= 3)
        lines.insert(i, "\r\n");
    EXPECT_EQ(contents(DataEncoder::initWithData(lines)), QStringList(u"ab=A"_s));
}

// Beside a list of pairs, through every kind of change.
TEST(DataEncoder, BehavesAsAListOfPairs)
{
    std::mt19937 random(7);
    DataEncoder encoder;
    QList<std::pair<QString, QString>> pairs;
    for (int round = 0; round < 20'000; ++round) {
        const QString key = u"ключ%1"_s.arg(random() % 300);
        const QString value = QString::number(random()).repeated(int(random() % 3));
        const auto place = std::ranges::find(pairs, key, &std::pair<QString, QString>::first);
        if (random() % 3 == 0 || value.isEmpty()) {
            EXPECT_EQ(encoder.remove(key), place != pairs.end());
            if (place != pairs.end())
                pairs.erase(place);
        } else {
            encoder.addString(key, value);
            place != pairs.end() ? void(place->second = value) : pairs.append({key, value});
        }
        if (round % 500 == 0)
            encoder = DataEncoder(DataEncoder::initWithData(encoder.encodeData()));
        if (round % 37 == 0) {
            QStringList expected;
            for (const auto &[k, v] : pairs)
                expected.append(k + u'=' + v);
            ASSERT_EQ(contents(encoder), expected) << "round " << round;
        }
    }
    EXPECT_LT(recordsOf(encoder).size(), 300 * 50);
    encoder.clear();
    EXPECT_TRUE(encoder.encodeData().isEmpty());
}

TEST(DataEncoder, ExchangesBlobsWithPython)
{
    const char script[] = "import sys, zlib, base64\n"
                          "records = zlib.decompress(base64.b64decode(sys.stdin.read())).decode()\n"
                          "assert dict(r.split(',') for r in records.split('\\r')[:-1]) == {'title': 'U2tpenrDqQ==', "
                          "'pages': 'MTI='}\n"
                          "records = 'title,' + base64.b64encode('Blé'.encode()).decode() + '\\rdraft,WUVT\\r'\n"
                          "print(base64.encodebytes(zlib.compress(records.encode())).decode())";
    DataEncoder encoder;
    encoder.addString(u"title"_s, u"Skizzé"_s);
    encoder.addInteger(u"pages"_s, 12);
    QProcess python;
    python.start(u"python3"_s, {u"-c"_s, QString::fromUtf8(script)});
    python.write(encoder.encodeData());
    python.closeWriteChannel();
    ASSERT_TRUE(python.waitForFinished());
    EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    const auto answer = DataEncoder::initWithData(python.readAllStandardOutput());
    EXPECT_EQ(contents(answer), QStringList({u"title=Blé"_s, u"draft=YES"_s}));
    EXPECT_TRUE(answer.getBool(u"draft"_s));
}
