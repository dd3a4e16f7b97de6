// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/undoitem.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

const QString dictionaryPair1 = u"dictionaryPairItem1"_s;
const QString dictionaryPair2 = u"dictionaryPairItem2"_s;
const QString integerPair1 = u"integerPairItem1"_s;
const QString integerPair2 = u"integerPairItem2"_s;

/// Qt rounds fractions, numbers drop them.
qint64 integerValue(const QVariant &value)
{
    const bool isFraction = value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float;
    return isFraction ? QVariant(std::trunc(value.toDouble())).toLongLong() : value.toLongLong();
}

} // namespace

UndoItem::UndoItem(QObject *parent) : Object(parent) {}

UndoItem::~UndoItem() = default;

std::shared_ptr<UndoItem> UndoItem::initWithType(bool isUndo, const QString &name)
{
    auto item = std::make_shared<UndoItem>();
    item->setName(name);
    item->setIsUndo(isUndo);
    return item;
}

void UndoItem::store(const QString &key, const QVariant &value)
{
    auto dictionary = m_dataDictionary;
    if (value.isValid())
        dictionary.insert(key, value);
    else
        dictionary.remove(key);
    setDataDictionary(dictionary);
}

void UndoItem::addDictionaryPairItem1(const QVariant &item1, const QVariant &item2)
{
    store(dictionaryPair1, item1);
    store(dictionaryPair2, item2);
}

QVariant UndoItem::getDictionaryPairItem1() const { return m_dataDictionary.value(dictionaryPair1); }

QVariant UndoItem::getDictionaryPairItem2() const { return m_dataDictionary.value(dictionaryPair2); }

void UndoItem::addIntegerPairItem1(qint64 item1, qint64 item2)
{
    store(integerPair1, item1);
    store(integerPair2, item2);
}

qint64 UndoItem::getIntegerPairItem1() const { return integerValue(m_dataDictionary.value(integerPair1)); }

qint64 UndoItem::getIntegerPairItem2() const { return integerValue(m_dataDictionary.value(integerPair2)); }

void UndoItem::swapPair(const UndoItem *other, const QString &key1, const QString &key2)
{
    store(key1, other ? other->m_dataDictionary.value(key2) : QVariant());
    store(key2, other ? other->m_dataDictionary.value(key1) : QVariant());
}

void UndoItem::swapDictionaryPairItems(const UndoItem *other) { swapPair(other, dictionaryPair1, dictionaryPair2); }

void UndoItem::swapIntegerPairItems(const UndoItem *other) { swapPair(other, integerPair1, integerPair2); }

std::shared_ptr<UndoItem> createUndoItem(UndoManager *undoManager, const Action<UndoItem *> &action, bool isUndo,
                                         const QString &name)
{
    auto item = UndoItem::initWithType(isUndo, name);
    if (undoManager) {
        undoManager->registerUndoWithTarget(action.target(), [action, item] { action(item.get()); });
        undoManager->setActionName(name);
    }
    return item;
}

} // namespace dravelin
