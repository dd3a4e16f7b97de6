// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform.h>

#include <support/decimalcomma.h>
#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QLine>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimeZone>
#include <QtCore/QUuid>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Least = std::numeric_limits<qint64>::min();
constexpr quint64 Most = std::numeric_limits<quint64>::max();

class Node : public Object, public Coding
{
    Q_OBJECT

public:
    void encodeWithCoder(KeyedArchiver &coder) const override
    {
        coder.encodeObject(name, u"$class"_s); // which is the archive's own key too
        coder.encodeObject(next, u"next"_s);
        coder.encodeObject(items, u"items"_s);
        coder.encodeInteger(1, u"twice"_s);
        coder.encodeInteger(2, u"twice"_s);
    }
    bool initWithCoder(KeyedUnarchiver &coder) override
    {
        name = coder.decodeObjectForKey<QString>(u"$class"_s);
        next = coder.decodeObjectForKey<Node>(u"next"_s);
        items = coder.decodeObjectForKey<QVariantList>(u"items"_s);
        EXPECT_EQ(coder.decodeInt32ForKey(u"twice"_s), 2);
        return name != u"refuse"_s;
    }

    QString name;
    std::shared_ptr<Node> next;
    QVariantList items;
};

class Stranger : public Coding
{
    void encodeWithCoder(KeyedArchiver &) const override {}
    bool initWithCoder(KeyedUnarchiver &) override { return true; }
};

std::shared_ptr<Node> node(const QString &name, const std::shared_ptr<Node> &next = {})
{
    registerCodingClass<Node>(u"Node"_s);
    auto result = std::make_shared<Node>();
    result->name = name;
    result->next = next;
    return result;
}

QByteArray archived(const QVariant &value) { return KeyedArchiver::archivedDataWithRootObject(value); }
QVariant unarchived(const QByteArray &data) { return KeyedUnarchiver::unarchiveObjectWithData(data); }

QVariantList nested(int levels)
{
    QVariantList list{QDate(2024, 2, 29), QUrl(u"a:b"_s)};
    for (int i = 1; i < levels; ++i)
        list = QVariantList{QVariant(list)};
    return list;
}

/// An archive of the given entries, whose root is entry 1.
QByteArray archive(const QByteArray &entries)
{
    return "<plist><dict><key>$archiver</key><string>x</string><key>$version</key><integer>100000</integer><key>$top</"
           "key>"
           "<dict><key>root</key><dict><key>CF$UID</key><integer>1</integer></dict></dict><key>$objects</key><array>"
           "<string>$null</string>"
           + entries + "</array></dict></plist>";
}
QByteArray uid(const char *index)
{
    return QByteArray("<dict><key>CF$UID</key><integer>") + index + "</integer></dict>";
}
QByteArray record(const char *cls, const QByteArray &fields)
{
    return "<dict><key>$class</key>" + uid(cls) + fields + "</dict>";
}
QByteArray className(const char *name)
{
    return QByteArray("<dict><key>$classname</key><string>") + name + "</string></dict>";
}
QByteArray list(const QByteArray &references)
{
    return record("2", "<key>NS.objects</key><array>" + references + "</array>");
}

} // namespace

TEST(Archive, GivesBackEqualValuesOfTheSameType)
{
    const DecimalComma comma;
    const QDateTime date(QDate(2024, 2, 29), QTime(23, 59, 58, 123), QTimeZone::utc());
    const QVariantMap map{{u"$class"_s, 0.5}, {u""_s, QVariantList{u"1"_s, 1LL, true, 1.0, QByteArray("1")}}};
    const QVariant rows[] = {QVariant(),
                             true,
                             u""_s,
                             u"$null"_s,
                             u"\xd800\x1b \n"_s,
                             Least,
                             Most,
                             0.1,
                             -0.0,
                             HUGE_VAL,
                             QByteArray(""),
                             QByteArray("\0\xff", 2),
                             date,
                             date.addYears(-3000),
                             QDate(-44, 3, 15),
                             QDate(),
                             QTime(23, 59, 59, 999),
                             QTime(),
                             QUrl(u"https://ä.example/a%20b?c#d"_s),
                             QUrl(),
                             QUuid(u"{67c8770b-44f1-410a-ab9a-f9b5446f13ee}"_s),
                             QPoint(-1, 2),
                             QSize(-1, 2),
                             QRect(1, 2, -3, 4),
                             QPointF(0.1, -0.0),
                             QSizeF(1e300, 0.1),
                             QRectF(1, 2, -3, .4),
                             QVariant::fromValue(Range{Most, 7}),
                             QVariant::fromValue(Color::cmyk(.1, .2, .3, .4, .5)),
                             QVariant::fromValue(Color()),
                             QColor(1, 2, 3, 4),
                             QColor(),
                             QVariant::fromValue(nullptr),
                             QVariantList(),
                             QStringList{u"a"_s, u"a"_s, u""_s},
                             map,
                             QVariantHash(map.begin(), map.end()),
                             QVariantList{QVariant(), map, map, QVariantList{map}},
                             nested(256)};
    const LogRecorder log;
    for (const QVariant &row : rows) {
        const QByteArray data = archived(row);
        const QVariant copy = unarchived(data);
        EXPECT_EQ(copy, row) << data.toStdString();
        EXPECT_EQ(copy.metaType(), row.metaType()) << data.toStdString();
        EXPECT_EQ(archived(copy), data);
    }
    EXPECT_TRUE(std::isnan(unarchived(archived(std::nan(""))).toDouble()));
    const QVariantList mixed = unarchived(archived(map)).toMap()[u""_s].toList(); // QVariant holds "1" equal to 1
    EXPECT_EQ(mixed[0].typeId(), QMetaType::QString);
    EXPECT_EQ(mixed[2].typeId(), QMetaType::Bool);
    EXPECT_EQ(mixed[3].typeId(), QMetaType::Double);
    EXPECT_EQ(unarchived(archived(QColor::fromHsv(120, 255, 255))), QVariant(QColor(0, 255, 0)));
    EXPECT_FALSE(unarchived(archived(QVariantList{QString()})).toList()[0].isValid());
    EXPECT_EQ(log.lines(), QStringList());
}

TEST(Archive, KeepsWhoRefersToWhom)
{
    LogRecorder log;
    const auto a = node(u"a"_s), b = node(u"b"_s, a);
    a->next = b;
    a->items = b->items = QVariantList{QVariant::fromValue(a), QVariant::fromValue(CodingPointer(b)), u"x"_s};
    KeyedArchiver archiver;
    archiver.encodeObject(a->items, u"items"_s);
    archiver.encodeObjects(QList{b, a, b}, u"$top"_s);
    KeyedUnarchiver unarchiver(archiver.encodedData());
    const auto objects = unarchiver.decodeObjectsForKey<Node>(u"$top"_s);
    ASSERT_EQ(objects.size(), 3);
    EXPECT_EQ(objects[0], objects[2]);
    EXPECT_EQ(objects[0]->next, objects[1]);
    EXPECT_EQ(objects[1]->next, objects[0]);
    EXPECT_EQ(retain(objects[0].get()), objects[0]);
    const auto items = unarchiver.decodeObjectForKey<QVariantList>(u"items"_s);
    for (const QVariantList &same : {objects[0]->items, objects[1]->items, items}) {
        ASSERT_EQ(same.size(), 3);
        EXPECT_EQ(same[0].value<std::shared_ptr<Node>>(), objects[1]);
        EXPECT_EQ(same[1].value<std::shared_ptr<Node>>(), objects[0]);
    }
    EXPECT_EQ(log.take(),
              QStringList(2, u"KeyedArchiver: key \"twice\" of Node is used twice, the last value counts"_s));
    EXPECT_EQ(unarchiver.error(), QString());
    EXPECT_EQ(unarchiver.decodeObjectForKey<Node>(u"items"_s), nullptr);
    EXPECT_EQ(log.take().size(), 1);
    for (const auto &object : {a, b, objects[0], objects[1]}) {
        object->next.reset();
        object->items = {};
    }
}

TEST(Archive, TakesChainsOfAnyLength)
{
    const LogRecorder log;
    constexpr int Count = 30'000;
    std::shared_ptr<Node> chain;
    for (int i = 0; i < Count; ++i)
        chain = node(QString::number(i), chain);
    auto copy = KeyedUnarchiver::unarchiveObjectWithData<Node>(KeyedArchiver::archivedDataWithRootObject(chain));
    int count = 0;
    for (; copy; copy = std::exchange(copy->next, {})) // one at a time: destroying them nests too
        count += copy->name == QString::number(Count - 1 - count);
    EXPECT_EQ(count, Count);
    while (chain)
        chain = std::exchange(chain->next, {});
}

TEST(Archive, SharedListsStayShared)
{
    QVariantList bomb{u"x"_s};
    QVariantMap map{{u"k"_s, 1}};
    for (int i = 0; i < 60; ++i) {
        bomb = QVariantList{QVariant(bomb), QVariant(bomb), QVariant(map)};
        map = QVariantMap{{u"a"_s, map}, {u"b"_s, map}};
    }
    const QByteArray data = archived(bomb);
    EXPECT_LT(data.size(), 100'000);
    EXPECT_EQ(archived(unarchived(data)), data);
}

TEST(Archive, SaysWhatItCannotHold)
{
    const std::pair<QVariant, const char *> rows[] = {
        {QLine(), "a value of type QLine cannot be archived under the key \"root\""},
        {QVariant::fromValue(Color::pattern(QImage(1, 1, QImage::Format_RGB32))), "type dravelin::Color"},
        {QDateTime(), "type NSDate"},
        {nested(257), "nested deeper than 256 levels"},
        {QVariant::fromValue(CodingPointer(std::make_shared<Stranger>())), "(anonymous namespace)::Stranger"}};
    for (const auto &[value, cause] : rows) {
        const LogRecorder log;
        QString error;
        const bool isInner = value.typeId() == QMetaType::QVariantList; // only the innermost list is missing
        EXPECT_EQ(KeyedArchiver::archivedDataWithRootObject(value, &error).isNull(), !isInner) << cause;
        EXPECT_TRUE(error.contains(QLatin1String(cause))) << error.toStdString();
        EXPECT_EQ(log.lines().size(), 1);
        EXPECT_EQ(unarchived(archived(QVariantList{1LL, value})).toList().size(), 2);
    }
    const LogRecorder log;
    KeyedArchiver archiver;
    archiver.finishEncoding();
    archiver.encodeObject(1, u"late"_s);
    EXPECT_EQ(log.lines().size(), 1);
    EXPECT_FALSE(KeyedUnarchiver(archiver.encodedData()).containsValueForKey(u"late"_s));
}

TEST(Archive, DamageIsAbsentAndLogged)
{
    node({});
    const QByteArray date = "<key>NS.time</key>", array = className("NSArray"), time = className("NSDate");
    const std::pair<QByteArray, const char *> rows[] = {
        {"", "not an archive: line 1"},
        {"<plist><dict/></plist>", "not an archive: no $archiver of $version 100000"},
        {archive("").replace("100000", "99999"), "not an archive"},
        {archive("").replace("<array>", "<dict>").replace("</array>", "</dict>"), "not an archive: line"},
        {archive("<string>x</string>").chopped(9), "not an archive: line"},
        {archive(""), "a reference to entry 1 of 1"},
        {archive("").replace(">1<", ">9223372036854775807<"), "a reference to entry 9223372036854775807"},
        {archive("").replace(">1<", ">-1<"), "in place of a reference"},
        {archive(uid("0")), "entry 1 is no object"},
        {archive("<array/>"), "entry 1 is no object"},
        {archive("<dict/>"), "entry 1 has no class"},
        {archive(record("9", "")), "entry 1 has no class"},
        {archive(record("1", "")), "entry 1 has no class"},
        {archive(record("2", "") + className("Blob")), "entry 1 is of the unknown class \"Blob\""},
        {archive(record("2", "") + array), "entry 1 is no NSArray"},
        {archive(record("2", "<key>NS.keys</key><array/><key>NS.objects</key><array><true/></array>")
                 + className("NSDictionary")),
         "entry 1 is no NSDictionary"},
        {archive(record("2", date + "<real>nan</real>") + time), "entry 1 is no NSDate"},
        {archive(record("2", date + "<real>-1e20</real>") + time), "entry 1 is no NSDate"},
        {archive(record("2", "<key>NS.special</key><integer>3</integer>") + className("NSValue")),
         "entry 1 is no NSValue"},
        {archive(record("2", "<key>NS.pointval</key><string>{1, 3e9}</string>") + className("QPoint")),
         "entry 1 is no QPoint"},
        {archive(record("2", "<key>space</key><integer>5</integer>") + className("QColor")), "entry 1 is no QColor"},
        {archive(record("2", "<key>NS.uuidbytes</key><data>AA==</data>") + className("NSUUID")),
         "entry 1 is no NSUUID"},
        {archive(record("2", "<key>julianDay</key><integer>-9000000000000000000</integer>") + className("QDate")),
         "QDate"},
        {archive(record("2", "<key>milliseconds</key><integer>86400000</integer>") + className("QTime")), "QTime"},
        {archive(record("2", "<key>$$class</key><string>refuse</string><key>twice</key><real>2.9</real>")
                 + className("Node")),
         "entry 1: Node refuses its fields"}};
    for (const auto &[data, cause] : rows) {
        LogRecorder log;
        QString error;
        EXPECT_FALSE(KeyedUnarchiver::unarchiveObjectWithData(data, &error).isValid()) << data.toStdString();
        EXPECT_TRUE(error.contains(QLatin1String(cause))) << error.toStdString();
        EXPECT_EQ(log.lines(), QStringList(u"KeyedUnarchiver: "_s + error));
    }
}

TEST(Archive, CirclesOfListsEnd)
{
    node({});
    LogRecorder log;
    const QByteArray array = className("NSArray");
    EXPECT_EQ(unarchived(archive(list(uid("1") + uid("3")) + array + "<true/>")),
              QVariant(QVariantList{QVariant(), true}));
    EXPECT_EQ(log.take(), QStringList(u"KeyedUnarchiver: entry 1 holds itself"_s));

    // A chain of 30,000 lists, and a list of 30,000 objects that each hold that same list.
    QByteArray chain, many = list([] {
                                 QByteArray all;
                                 for (int i = 3; i < 30'000; ++i)
                                     all += uid(QByteArray::number(i));
                                 return all;
                             }())
                             + className("NSArray");
    for (int i = 3; i < 30'000; ++i) {
        chain += list(uid(QByteArray::number(i + 1)));
        many += record("30000", "<key>items</key>" + uid("1") + "<key>twice</key><integer>2</integer>");
    }
    EXPECT_TRUE(unarchived(archive(list(uid("3")) + array + chain + "<true/>")).isValid());
    EXPECT_EQ(log.take(), QStringList(u"KeyedUnarchiver: lists and maps nested deeper than 256 levels"_s));
    const QVariantList objects = unarchived(archive(many + className("Node"))).toList();
    ASSERT_EQ(objects.size(), 29'997);
    for (const QVariant &object : objects) {
        QVariantList &items = object.value<std::shared_ptr<Node>>()->items;
        EXPECT_EQ(items.size(), objects.size());
        items = {};
    }
    EXPECT_EQ(log.take(), QStringList());
}

// Each chain of 200 lists goes on with the one before it, which has been read, and was short enough, by then.
TEST(Archive, SharedListsDoNotAddUpToDeepOnes)
{
    QByteArray chains, heads;
    for (int i = 3; i < 20'003; ++i) {
        const int next = i % 200 != 2 ? i + 1 : i < 203 ? 0 : i - 399;
        chains += list(uid(QByteArray::number(next)));
        heads += i % 200 == 3 ? uid(QByteArray::number(i)) : QByteArray();
    }
    const LogRecorder log;
    QString error;
    EXPECT_TRUE(KeyedUnarchiver::unarchiveObjectWithData(archive(list(heads) + className("NSArray") + chains), &error)
                    .isValid());
    EXPECT_EQ(error, u"lists and maps nested deeper than 256 levels"_s);

    const QVariantList deep = nested(200);
    EXPECT_FALSE(archived(QVariantList{deep, nested(255)}).isNull());
    QVariantList deeper = deep;
    for (int i = 0; i < 100; ++i)
        deeper = QVariantList{QVariant(deeper)};
    EXPECT_FALSE(KeyedArchiver::archivedDataWithRootObject(QVariantList{deep, deeper}, &error).isNull());
    EXPECT_TRUE(error.startsWith(u"lists and maps nested deeper than 256 levels"_s)) << error.toStdString();
}

TEST(Archive, NumbersFitOrAreAbsent)
{
    KeyedArchiver archiver;
    archiver.encodeInt64(1LL << 31, u"wide"_s);
    archiver.encodeObject(Most, u"most"_s);
    archiver.encodeDouble(-2.9, u"real"_s);
    archiver.encodeDouble(0x1p63, u"large"_s);
    archiver.encodeDouble(std::nan(""), u"nan"_s);
    archiver.encodeFloat(0.1f, u"float"_s);
    archiver.encodeBool(true, u"bool"_s);
    archiver.encodeBytes({}, u"bytes"_s);
    archiver.encodeObject(u"7"_s, u"text"_s);
    KeyedUnarchiver unarchiver(archiver.encodedData());
    LogRecorder log;
    EXPECT_EQ(unarchiver.decodeInt64ForKey(u"wide"_s), 1LL << 31);
    EXPECT_EQ(unarchiver.decodeInt32ForKey(u"real"_s), -2);
    EXPECT_EQ(unarchiver.decodeIntegerForKey(u"bool"_s), 1);
    EXPECT_TRUE(unarchiver.decodeBoolForKey(u"most"_s));
    EXPECT_EQ(unarchiver.decodeDoubleForKey(u"most"_s), 0x1p64);
    EXPECT_EQ(unarchiver.decodeFloatForKey(u"float"_s), 0.1f);
    EXPECT_EQ(unarchiver.decodeBytesForKey(u"bytes"_s), QByteArray(""));
    EXPECT_TRUE(unarchiver.decodeBytesForKey(u"none"_s).isNull());
    EXPECT_EQ(unarchiver.decodeIntegerForKey(u"none"_s), 0);
    EXPECT_EQ(log.take(), QStringList());
    EXPECT_EQ(unarchiver.decodeInt32ForKey(u"wide"_s), 0);
    for (const QString &key : {u"most"_s, u"large"_s, u"nan"_s, u"text"_s})
        EXPECT_EQ(unarchiver.decodeIntegerForKey(key), 0) << key.toStdString();
    EXPECT_EQ(log.take().size(), 5);
    unarchiver.finishDecoding();
    EXPECT_FALSE(unarchiver.containsValueForKey(u"real"_s));
}

// Python reads what plistutil made of ours; and what plistutil writes from the binary form, in which references are a
// type of their own, is ours again.
TEST(Archive, OtherReadersKnowTheReferences)
{
    const auto a = node(u"ä"_s, node(u"b"_s));
    a->items = {QVariantMap{{u"date"_s, QDateTime(QDate(2001, 1, 2), QTime(), QTimeZone::utc())}}, QPointF(1.5, 2), 7};
    const QTemporaryDir directory;
    QFile file(directory.filePath(u"a.plist"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(KeyedArchiver::archivedDataWithRootObject(a));
    file.close();
    const char script[] = R"(
import plistlib, subprocess, sys
name = sys.argv[1]
def convert(out, form): subprocess.run(['plistutil', '-i', name, '-o', out, '-f', form], check=True)
def binary(v):
    if isinstance(v, list): return [binary(i) for i in v]
    if not isinstance(v, dict): return v
    return plistlib.UID(v['CF$UID']) if 'CF$UID' in v else {k: binary(i) for k, i in v.items()}
convert(name + '.bin', 'bin')
p = plistlib.load(open(name + '.bin', 'rb'))
assert p == plistlib.load(open(name, 'rb'))
assert p['$archiver'] == 'NSKeyedArchiver' and p['$version'] == 100000 and p['$objects'][0] == '$null'
at = lambda uid: p['$objects'][uid['CF$UID']]
cls = lambda o: at(o['$class'])['$classname']
root = at(p['$top']['root'])
assert cls(root) == 'Node' and at(root['$$class']) == 'ä' and root['twice'] == 2
assert at(at(root['next'])['$$class']) == 'b' and at(at(root['next'])['next']) == '$null'
m, point, seven = map(at, at(root['items'])['NS.objects'])
assert at(m['NS.keys'][0]) == 'date' and at(m['NS.objects'][0])['NS.time'] == 86400 and seven == 7
assert at(m['$class'])['$classes'] == ['NSDictionary', 'NSObject'] and at(point['NS.pointval']) == '{1.5, 2}'
plistlib.dump(binary(p), open(name, 'wb'), fmt=plistlib.FMT_BINARY)
convert(name + '.xml', 'xml')
)";
    QProcess python;
    python.start(u"python3"_s, {u"-c"_s, QString::fromUtf8(script), file.fileName()});
    ASSERT_TRUE(python.waitForFinished());
    ASSERT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    QFile back(file.fileName() + u".xml"_s);
    ASSERT_TRUE(back.open(QIODevice::ReadOnly));
    const auto copy = KeyedUnarchiver::unarchiveObjectWithData<Node>(back.readAll());
    ASSERT_TRUE(copy && copy->next);
    EXPECT_EQ(copy->name + copy->next->name, u"äb"_s);
    EXPECT_EQ(copy->items, a->items);
}

#include "archive_test.moc"
