// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>

static QTextStream out(stdout);

class Canvas : public dravelin::Object
{
    Q_OBJECT

public:
    explicit Canvas(dravelin::UndoManager *undoManager) : undoManager(undoManager) {}

    //! [paper]
    void setPaper(const QString &paper)
    {
        undoManager->registerUndoWithTarget(this, [this, old = m_paper] { setPaper(old); });
        undoManager->setActionName("Paper Colour");
        m_paper = paper;
    }
    //! [paper]

    //! [item]
    void moveTo(qint64 x)
    {
        auto item = dravelin::createUndoItem(undoManager, this, "moveShape:", true, "Move");
        item->addIntegerPairItem1(m_x, x); // where it was, where it goes
        m_x = x;
    }
    Q_INVOKABLE void moveShape(dravelin::UndoItem *item) // undoes and redoes
    {
        auto opposite = dravelin::createUndoItem(undoManager, this, "moveShape:", !item->isUndo(), item->name());
        opposite->swapIntegerPairItems(item);
        m_x = item->getIntegerPairItem1();
    }
    //! [item]

    void print() const { out << m_paper << " at " << m_x << '\n'; }

private:
    dravelin::UndoManager *undoManager;
    QString m_paper = "white";
    qint64 m_x = 0;
};

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    dravelin::UndoManager manager;
    dravelin::UndoManager *undoManager = &manager;
    Canvas canvas(undoManager);

    QMenu editMenu;
    QMenu *menu = &editMenu;
    //! [menu]
    QAction *undo = undoManager->createUndoAction(menu);
    QAction *redo = undoManager->createRedoAction(menu);
    undo->setShortcut(QKeySequence::Undo);
    menu->addActions({undo, redo});
    //! [menu]
    const auto print = [&] {
        canvas.print();
        for (const QAction *action : {undo, redo})
            out << "    " << action->text() << (action->isEnabled() ? "" : " (disabled)") << '\n';
    };
    print();

    //! [events]
    canvas.setPaper("cream");
    QCoreApplication::processEvents(); // as when control returns to the event loop
    canvas.moveTo(10);
    canvas.moveTo(25); // the same pass of the loop: one step with the move before
    //! [events]
    print();
    //! [back]
    undo->trigger(); // both moves
    print();
    undoManager->undo(); // the colour
    print();
    redo->trigger();
    print();
    //! [back]

    //! [drag]
    undoManager->beginUndoGrouping(); // the mouse is pressed
    for (const int x : {1, 2, 3}) {
        canvas.moveTo(x);
        QCoreApplication::processEvents();
    }
    undoManager->endUndoGrouping(); // and released
    undoManager->undo();
    //! [drag]
    print();
}

#include "undo.moc"
