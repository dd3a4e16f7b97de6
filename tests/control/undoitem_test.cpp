// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/undoitem.h>

#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtCore/QMetaProperty>
#include <QtTest/QSignalSpy>

#include <limits>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

/// A shape that is moved, undone and redone by items.
class Shape : public Object
{
    Q_OBJECT

public:
    UndoManager undo;
    qint64 x = 0;
    QList<bool> kinds;

    void moveTo(qint64 newX)
    {
        createUndoItem(&undo, this, "moveShape:", true, u"Move"_s)->addIntegerPairItem1(x, newX);
        x = newX;
    }
    Q_INVOKABLE void moveShape(dravelin::UndoItem *item)
    {
        kinds << item->isUndo();
        createUndoItem(&undo, this, &Shape::moveShape, !item->isUndo(), item->name())->swapIntegerPairItems(item);
        x = item->getIntegerPairItem1();
    }
};

} // namespace

TEST(UndoItem, NamesItsPropertiesInOrderAllEmptyAtFirst)
{
    const UndoItem item;
    QStringList properties;
    for (int i = Object::staticMetaObject.propertyCount(); i < item.metaObject()->propertyCount(); ++i) {
        const QMetaProperty property = item.metaObject()->property(i);
        const QVariant value = property.read(&item);
        EXPECT_TRUE(property.hasNotifySignal() && property.isWritable());
        EXPECT_TRUE(!value.isValid() || value == QVariant(value.metaType())) << property.name();
        properties << QLatin1String(property.name());
    }
    EXPECT_EQ(properties.join(u' '), u"name isUndo dataDictionary dataList dataObject dataString dataInteger dataFloat "
                                     "dataBoolean"_s);
    EXPECT_TRUE(item.name().isNull() && item.dataString().isNull());
    EXPECT_EQ(item.getIntegerPairItem1(), 0);

    const auto made = UndoItem::initWithType(true, u"Move"_s);
    EXPECT_EQ(made->name(), u"Move"_s);
    EXPECT_TRUE(made->isUndo());
}

TEST(UndoItem, KeepsPairsInItsDictionaryAndDropsAbsentOnes)
{
    UndoItem item;
    QSignalSpy changed(&item, &UndoItem::changed);
    item.addDictionaryPairItem1(u"old"_s, 2.5);
    item.addIntegerPairItem1(std::numeric_limits<qint64>::min(), 4);
    EXPECT_EQ(item.dataDictionary(), (QVariantMap{{u"dictionaryPairItem1"_s, u"old"_s},
                                                  {u"dictionaryPairItem2"_s, 2.5},
                                                  {u"integerPairItem1"_s, std::numeric_limits<qint64>::min()},
                                                  {u"integerPairItem2"_s, 4}}));
    EXPECT_EQ(changed.count(), 4);
    item.addIntegerPairItem1(std::numeric_limits<qint64>::min(), 4);
    EXPECT_EQ(changed.count(), 4);
    item.addDictionaryPairItem1({}, u"only"_s);
    EXPECT_FALSE(item.dataDictionary().contains(u"dictionaryPairItem1"_s));
    EXPECT_FALSE(item.getDictionaryPairItem1().isValid());
    EXPECT_EQ(item.getDictionaryPairItem2(), QVariant(u"only"_s));
    item.setDataDictionary({{u"integerPairItem1"_s, -2.9}, {u"integerPairItem2"_s, true}});
    EXPECT_EQ(item.getIntegerPairItem1(), -2);
    EXPECT_EQ(item.getIntegerPairItem2(), 1);
}

TEST(UndoItem, SwapsPairsInTheOrderOfWriting)
{
    UndoItem from, to;
    from.addIntegerPairItem1(1, 2);
    from.addDictionaryPairItem1(u"a"_s, u"b"_s);
    to.swapIntegerPairItems(&from);
    to.swapDictionaryPairItems(&from);
    EXPECT_EQ(to.getIntegerPairItem1(), 2);
    EXPECT_EQ(to.getIntegerPairItem2(), 1);
    EXPECT_EQ(to.getDictionaryPairItem1(), QVariant(u"b"_s));
    EXPECT_EQ(to.getDictionaryPairItem2(), QVariant(u"a"_s));

    to.swapIntegerPairItems(&to);
    to.swapDictionaryPairItems(&to);
    EXPECT_EQ(to.getIntegerPairItem1(), 1);
    EXPECT_EQ(to.getIntegerPairItem2(), 1);
    EXPECT_EQ(to.getDictionaryPairItem1(), QVariant(u"a"_s));
    EXPECT_EQ(to.getDictionaryPairItem2(), QVariant(u"a"_s));

    const UndoItem empty;
    to.swapIntegerPairItems(&empty);
    to.swapDictionaryPairItems(nullptr);
    EXPECT_TRUE(to.dataDictionary().isEmpty());
}

TEST(UndoItem, GoesRoundBetweenUndoAndRedo)
{
    Shape shape;
    shape.undo.setGroupsByEvent(false);
    shape.moveTo(10);
    shape.moveTo(25);
    EXPECT_EQ(shape.undo.undoMenuItemTitle(), u"Undo Move"_s);
    QList<qint64> places;
    for (const bool undoes : {true, true, false, false, true}) {
        undoes ? shape.undo.undo() : shape.undo.redo();
        places << shape.x;
    }
    EXPECT_EQ(places, (QList<qint64>{10, 0, 10, 25, 10}));
    EXPECT_EQ(shape.kinds, (QList<bool>{true, true, false, false, true}));
    EXPECT_EQ(shape.undo.redoActionName(), u"Move"_s);
}

TEST(UndoItem, IsMadeWithoutManagerAndKeptByOne)
{
    QObject target;
    EXPECT_EQ(createUndoItem(nullptr, &target, "moveShape:", true, u"Move"_s)->name(), u"Move"_s);

    UndoManager manager;
    QString undone;
    auto item = createUndoItem(
        &manager, &target, [&](UndoItem *i) { undone = i->dataString(); }, false, u"Type"_s);
    item->setDataString(u"hello"_s);
    const std::weak_ptr<UndoItem> kept = std::exchange(item, nullptr);
    manager.undo();
    EXPECT_EQ(undone, u"hello"_s);
    EXPECT_TRUE(kept.expired());
}

#include "undoitem_test.moc"
