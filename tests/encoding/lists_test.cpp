// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <support/printers.h>

#include <QtCore/QPointF>

#include <gtest/gtest.h>

#include <functional>

using namespace dravelin;

namespace {

const QVariant Null = QVariant::fromValue(nullptr);

// One object per letter; "." is the null placeholder.
QVariantList list(const char *letters)
{
    QVariantList result;
    for (const char *letter = letters; *letter; ++letter)
        result.append(*letter == '.' ? Null : QVariant(QString(QLatin1Char(*letter))));
    return result;
}

void expectRangeError(QVariantList list, const std::function<void(QVariantList &)> &operation, const char *reason)
{
    const QVariantList before = list;
    try {
        operation(list);
        ADD_FAILURE() << "no exception: " << reason;
    } catch (const Exception &exception) {
        EXPECT_EQ(exception.name(), QLatin1String(NSRangeException));
        EXPECT_EQ(exception.reason(), QLatin1String(reason));
    }
    EXPECT_EQ(list, before);
}

} // namespace

TEST(StackQueue, IsAStackAndAQueue)
{
    QVariantList stack, queue;
    for (const int i : {1, 2, 3}) {
        push(stack, i);
        enqueue(queue, i);
    }
    EXPECT_EQ(peek(stack), QVariant(3));
    for (const int i : {1, 2, 3}) {
        EXPECT_EQ(pop(stack), QVariant(4 - i));
        EXPECT_EQ(dequeue(queue), QVariant(i));
    }
    EXPECT_FALSE(pop(stack).isValid());
    EXPECT_FALSE(dequeue(stack).isValid());
    EXPECT_FALSE(peek(stack).isValid());
}

TEST(StackQueue, TakesTypedLists)
{
    QStringList texts{QStringLiteral("")};
    EXPECT_EQ(pop(texts), std::optional(QString()));
    EXPECT_EQ(pop(texts), std::nullopt);
    int value = 0;
    QList<int *> pointers{&value};
    EXPECT_EQ(peek(pointers), &value);
    EXPECT_EQ(pop(pointers), &value);
    EXPECT_EQ(dequeue(pointers), nullptr);
    QList<std::shared_ptr<int>> shared;
    EXPECT_EQ(peek(shared), nullptr);
}

TEST(Lists, InsertSafely)
{
    const struct
    {
        qint64 index;
        const char *result;
    } rows[] = {{-1, "ABX"}, {0, "XAB"}, {1, "AXB"},
                {2, "ABX"},  {5, "ABX"}, {std::numeric_limits<qint64>::min(), "ABX"}};
    for (const auto &row : rows) {
        QVariantList objects = list("AB");
        insertObjectSafe(objects, QStringLiteral("X"), row.index);
        EXPECT_EQ(objects, list(row.result)) << row.index;
    }
    EXPECT_FALSE(rangeCheck(list("AB"), -1));
    EXPECT_TRUE(rangeCheck(list("AB"), 1));
    EXPECT_FALSE(rangeCheck(list("AB"), 2));
}

TEST(Lists, MoveOne)
{
    const struct
    {
        qint64 from, to;
        const char *result;
    } rows[] = {{0, 2, "BACD"}, {3, 1, "ADBC"}, {1, 1, "ABCD"},  {1, 2, "ABCD"},  {0, 4, "BCDA"}, {0, 99, "BCDA"},
                {3, 4, "ABCD"}, {2, 0, "CABD"}, {1, -1, "ACDB"}, {-1, 2, "ABCD"}, {4, 0, "ABCD"}};
    for (const auto &row : rows) {
        QVariantList objects = list("ABCD");
        move(objects, row.from, row.to);
        EXPECT_EQ(objects, list(row.result)) << row.from << " to " << row.to;
    }
}

TEST(Lists, SwapAndCopy)
{
    QVariantList objects = list("ABC");
    swap(objects, 0, 2);
    copy(objects, 0, 2);
    copy(objects, 1, -1);
    EXPECT_EQ(objects, list("CBCAB"));
    expectRangeError(
        list("AB"), [](auto &l) { swap(l, 0, 2); }, "index 2 is outside a list of 2");
    expectRangeError(
        list("AB"), [](auto &l) { swap(l, -1, 0); }, "index -1 is outside a list of 2");
    expectRangeError(
        list("AB"), [](auto &l) { copy(l, 2, 0); }, "index 2 is outside a list of 2");
}

TEST(MoveRows, FollowsItsRules)
{
    const struct
    {
        const char *before;
        std::set<qsizetype> rows;
        qint64 to;
        const char *after;
        Range range;
    } rows[] = {
        {"ABCD", {0, 2}, 4, "BDAC", {2, 2}},
        {"ABCD", {1, 3}, 0, "BDAC", {0, 2}},
        {"ABCD", {1}, 2, "ABCD", {1, 1}},
        {"ABCD", {}, 1, "ABCD", {1, 0}},
        {"", {}, 0, "", {0, 0}},
        {"ABAC", {0}, 4, "BCA", {2, 1}}, // every equal object goes
        {"ABAC", {0, 2}, 1, "AABC", {0, 2}},
        {".ABC", {1}, 4, "ABC.", {0, 1}}, // an older placeholder is taken for the mark
        {"AB.C", {2 - 1}, 0, "BA.C", {0, 1}},
    };
    for (const auto &row : rows) {
        QVariantList objects = list(row.before);
        EXPECT_EQ(moveRows(objects, row.rows, row.to), row.range) << row.before << " to " << row.to;
        EXPECT_EQ(objects, list(row.after)) << row.before << " to " << row.to;
    }
}

TEST(MoveRows, ChecksItsRange)
{
    expectRangeError(
        list("AB"), [](auto &l) { moveRows(l, {2}, 0); }, "index 2 is outside a list of 2");
    expectRangeError(
        list("AB"), [](auto &l) { moveRows(l, {-1}, 0); }, "index -1 is outside a list of 2");
    expectRangeError(
        list("AB"), [](auto &l) { moveRows(l, {0}, 3); }, "index 3 is outside a list of 2");
    expectRangeError(
        list("A.B"), [](auto &l) { moveRows(l, {1}, 0); }, "the null placeholder cannot be moved");
}

TEST(MoveRows, ComparesObjectsOfAllTypesByValue)
{
    QObject object;
    // Equal objects stand in one row.
    const QList<QVariantList> classes{
        {1, 1.0, true, 1LL, 1.0F, QVariant::fromValue('\1')},
        {0, false, 0.0, -0.0},
        {-1, -1LL, -1.0},
        {~0ULL},
        {~0U, 4294967295LL},
        {0.5, 0.5F},
        {0.1},
        {0.1F},
        {9007199254740993LL},
        {9007199254740992LL, 9007199254740992.0},
        {std::nan(""), -std::nan("")},
        {QStringLiteral("1")},
        {QByteArray("1")},
        {QVariantMap{{QStringLiteral("k"), 1}}},
        {QVariantMap{{QStringLiteral("k"), 2}}},
        {QVariantList{1, 2}},
        {QVariant()},
        {QVariant::fromValue(&object)},
        {QPointF(1, 2)},
    };
    for (const QVariantList &first : classes) {
        for (const QVariantList &second : classes) {
            for (const QVariant &moved : first) {
                QVariantList objects = QVariantList{moved} + second;
                const auto range = moveRows(objects, {0}, objects.size());
                EXPECT_EQ(range.location, quint64(&first == &second ? 0 : second.size()))
                    << testing::PrintToString(moved) << " among " << testing::PrintToString(second);
            }
        }
    }
}
