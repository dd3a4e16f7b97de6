// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/tableutilities.h>
#include <dravelin/platform/outlineview.h>

#include <QtGui/QStandardItemModel>
#include <QtTest/QTest>

#include <gtest/gtest.h>

using namespace dravelin;

namespace {

/// a (a0 (a00, a01), a1), b, c (c0)
class OutlineTest : public testing::Test
{
protected:
    QStandardItemModel model;
    OutlineView outline;

    OutlineTest()
    {
        for (const char *name : {"a", "b", "c"})
            model.appendRow({new QStandardItem(name), new QStandardItem});
        add("a", "a0");
        add("a", "a1");
        add("a0", "a00");
        add("a0", "a01");
        add("c", "c0");
        outline.setModel(&model);
    }
    void add(const QString &parent, const QString &name)
    {
        model.itemFromIndex(item(parent))->appendRow(new QStandardItem(name));
    }
    [[nodiscard]] QModelIndex item(const QString &name) const
    {
        return model.match(model.index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchRecursive | Qt::MatchExactly).value(0);
    }
    [[nodiscard]] QString shown() const
    {
        QString names;
        for (qsizetype row = 0; row < outline.numberOfRows(); ++row) {
            const QModelIndex index = outline.itemAtRow(row);
            EXPECT_EQ(outline.rowForItem(index), row);
            names += index.data().toString() + u' ';
        }
        return names.trimmed();
    }
};

} // namespace

TEST_F(OutlineTest, CountsTheRowsThatAreShown)
{
    EXPECT_EQ(shown(), "a b c");
    outline.expandItem(item("a0"));
    EXPECT_EQ(shown(), "a b c") << "its parent is collapsed";
    EXPECT_EQ(outline.rowForItem(item("a00")), -1);
    outline.expandItem(item("a").siblingAtColumn(1));
    EXPECT_EQ(shown(), "a a0 a00 a01 a1 b c");
    outline.setRowHidden(0, item("a"), true);
    EXPECT_EQ(shown(), "a a1 b c");
    EXPECT_EQ(outline.rowForItem({}), -1);
    EXPECT_FALSE(outline.itemAtRow(4).isValid());
    EXPECT_FALSE(outline.itemAtRow(-1).isValid());
    EXPECT_FALSE(outline.parentForItem(item("b")).isValid());
    EXPECT_FALSE(outline.isExpandable(item("b")) || outline.isExpandable({}) || outline.isItemExpanded(item("c")));
}

TEST_F(OutlineTest, RevealsAndSelectsItems)
{
    expandParentsOfItem(&outline, {});
    expandParentsOfItem(&outline, item("b"));
    EXPECT_EQ(shown(), "a b c");
    expandParentsOfItem(&outline, item("a0"));
    EXPECT_EQ(shown(), "a a0 a1 b c") << "not the item itself";
    outline.collapseAll();
    outline.selectRowIndexes({0, 2, 9}, false);
    EXPECT_EQ(outline.selectedRowIndexes(), (IndexSet{0, 2}));
    selectItem(&outline, item("a01"));
    EXPECT_EQ(shown(), "a a0 a00 a01 a1 b c");
    EXPECT_EQ(outline.selectedRowIndexes(), IndexSet{3});
    outline.selectRowIndexes({5}, true);
    EXPECT_EQ(outline.selectedRowIndexes(), (IndexSet{3, 5}));
    selectItem(&outline, {});
    EXPECT_EQ(outline.selectedRowIndexes(), (IndexSet{3, 5})) << "not shown";
    selectItem(&outline, item("b"));
    EXPECT_EQ(outline.selectedRowIndexes(), IndexSet{5});
    QTest::keyClick(&outline, Qt::Key_Down);
    EXPECT_EQ(outline.selectedRowIndexes(), IndexSet{6}) << "the keyboard goes on from there";
}
