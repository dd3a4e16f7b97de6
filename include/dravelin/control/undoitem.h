// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/action.h>
#include <dravelin/platform/undomanager.h>

#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>
#include <utility>

namespace dravelin {

/// What an action needs in order to be undone: a name for the menu, whether it is the undo or the redo, and room for
/// whatever is to be restored. Two pairs of values serve actions that exchange an old value for a new one: the redo's
/// pair is the undo's pair turned round.
///
///     void Canvas::dragTo(int x)
///     {
///         auto item = dravelin::createUndoItem(&m_undo, this, &Canvas::moveShape, true, tr("Move"));
///         item->addIntegerPairItem1(m_x, x);
///         m_x = x;
///     }
///     void Canvas::moveShape(dravelin::UndoItem *item)    // undoes and redoes
///     {
///         auto opposite = dravelin::createUndoItem(&m_undo, this, &Canvas::moveShape, !item->isUndo(), item->name());
///         opposite->swapIntegerPairItems(item);
///         m_x = int(item->getIntegerPairItem1());
///     }
///
/// The pairs lie in dataDictionary() under "dictionaryPairItem1" and so on. To keep an object alive in dataObject(), put
/// it in as a `std::shared_ptr`.
class DRAVELIN_EXPORT UndoItem : public Object
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(bool isUndo READ isUndo WRITE setIsUndo NOTIFY changed)
    Q_PROPERTY(QVariantMap dataDictionary READ dataDictionary WRITE setDataDictionary NOTIFY changed)
    Q_PROPERTY(QVariantList dataList READ dataList WRITE setDataList NOTIFY changed)
    Q_PROPERTY(QVariant dataObject READ dataObject WRITE setDataObject NOTIFY changed)
    Q_PROPERTY(QString dataString READ dataString WRITE setDataString NOTIFY changed)
    Q_PROPERTY(qint64 dataInteger READ dataInteger WRITE setDataInteger NOTIFY changed)
    Q_PROPERTY(double dataFloat READ dataFloat WRITE setDataFloat NOTIFY changed)
    Q_PROPERTY(bool dataBoolean READ dataBoolean WRITE setDataBoolean NOTIFY changed)

public:
    /// False, 0, empty or absent throughout.
    /// \operation{init}
    explicit UndoItem(QObject *parent = nullptr);
    ~UndoItem() override;

    /// A new item; not an initialiser, whatever the name says.
    /// \operation{initWithType:name:}
    [[nodiscard]] static std::shared_ptr<UndoItem> initWithType(bool isUndo, const QString &name);

    /// Stores two values of any kind. An absent one removes what was there.
    /// \operation{addDictionaryPairItem1:item2:}
    Q_INVOKABLE void addDictionaryPairItem1(const QVariant &item1, const QVariant &item2);
    /// \return invalid when nothing was stored
    /// \operation{getDictionaryPairItem1}
    [[nodiscard]] Q_INVOKABLE QVariant getDictionaryPairItem1() const;
    /// \operation{getDictionaryPairItem2}
    [[nodiscard]] Q_INVOKABLE QVariant getDictionaryPairItem2() const;

    /// \operation{addIntegerPairItem1:item2:}
    Q_INVOKABLE void addIntegerPairItem1(qint64 item1, qint64 item2);
    /// \return 0 when nothing was stored; of a number put into the dictionary by other means, the integer part
    /// \operation{getIntegerPairItem1}
    [[nodiscard]] Q_INVOKABLE qint64 getIntegerPairItem1() const;
    /// \operation{getIntegerPairItem2}
    [[nodiscard]] Q_INVOKABLE qint64 getIntegerPairItem2() const;

    /// Takes the other item's pair turned round: its second value first, then its first value. What it lacks is removed
    /// here. Given the item itself, both become the former second value, for the first is written before it is read.
    /// \operation{swapDictionaryPairItems:}
    Q_INVOKABLE void swapDictionaryPairItems(const dravelin::UndoItem *other);
    /// As swapDictionaryPairItems(), for the pair of integers.
    /// \operation{swapIntegerPairItems:}
    Q_INVOKABLE void swapIntegerPairItems(const dravelin::UndoItem *other);

    [[nodiscard]] QString name() const { return m_name; }
    void setName(const QString &name) { set(m_name, name); }
    [[nodiscard]] bool isUndo() const noexcept { return m_isUndo; }
    void setIsUndo(bool isUndo) { set(m_isUndo, isUndo); }
    [[nodiscard]] QVariantMap dataDictionary() const { return m_dataDictionary; }
    void setDataDictionary(const QVariantMap &dictionary) { set(m_dataDictionary, dictionary); }
    [[nodiscard]] QVariantList dataList() const { return m_dataList; }
    void setDataList(const QVariantList &list) { set(m_dataList, list); }
    [[nodiscard]] QVariant dataObject() const { return m_dataObject; }
    void setDataObject(const QVariant &object) { set(m_dataObject, object); }
    [[nodiscard]] QString dataString() const { return m_dataString; }
    void setDataString(const QString &string) { set(m_dataString, string); }
    [[nodiscard]] qint64 dataInteger() const noexcept { return m_dataInteger; }
    void setDataInteger(qint64 integer) { set(m_dataInteger, integer); }
    [[nodiscard]] double dataFloat() const noexcept { return m_dataFloat; }
    void setDataFloat(double number) { set(m_dataFloat, number); }
    [[nodiscard]] bool dataBoolean() const noexcept { return m_dataBoolean; }
    void setDataBoolean(bool boolean) { set(m_dataBoolean, boolean); }

Q_SIGNALS:
    /// Some property of the item has a new value.
    void changed();

private:
    template <class Value>
    void set(Value &member, const Value &value)
    {
        if (std::exchange(member, value) != value)
            Q_EMIT changed();
    }
    void store(const QString &key, const QVariant &value);
    void swapPair(const UndoItem *other, const QString &key1, const QString &key2);

    bool m_isUndo = false;
    bool m_dataBoolean = false;
    QString m_name;
    QVariantMap m_dataDictionary;
    QVariantList m_dataList;
    QVariant m_dataObject;
    QString m_dataString;
    qint64 m_dataInteger = 0;
    double m_dataFloat = 0;
};

/// Makes an item and registers it: undoing calls the target with the item, which the manager keeps until then. The step
/// is named after the item. Without a manager the item is made all the same.
/// \operation{createUndoItem}
DRAVELIN_EXPORT std::shared_ptr<UndoItem> createUndoItem(UndoManager *undoManager, const Action<UndoItem *> &action,
                                                         bool isUndo, const QString &name);

/// The same with the parts of an Action: a target, and an operation's name, a member function or a callable.
template <class Target, class Operation>
std::shared_ptr<UndoItem> createUndoItem(UndoManager *undoManager, Target *target, Operation operation, bool isUndo,
                                         const QString &name)
{
    return createUndoItem(undoManager, Action<UndoItem *>(target, std::move(operation)), isUndo, name);
}

} // namespace dravelin
