// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>

static QTextStream out(stdout);

static const char *whatToDo(const QKeyEvent *event)
{
    //! [keys]
    if (dravelin::escapeKey(event))
        return "cancel";
    if (dravelin::shiftKeyOnly(event) && dravelin::leftArrowKey(event))
        return "extend the selection";
    if (dravelin::controlKey(event) && dravelin::functionKey(event))
        return "debug";
    if (dravelin::isCharacter(event, "+"))
        return "zoom in";
    //! [keys]
    return "nothing";
}

static void show(const dravelin::Event &event)
{
    //! [event]
    out << "type " << event.type() << ", flags 0x" << QString::number(event.modifierFlags(), 16) << ", "
        << dravelin::modifierPressedCount(event) << " modifiers, time " << event.timestamp() << '\n';
    //! [event]
}

//! [double]
class Keyboard : public dravelin::InputState
{
public:
    quint64 held = 0;
    quint64 modifierFlags() override { return held; }
};
//! [double]

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QKeyEvent keys[] = {{QEvent::KeyPress, Qt::Key_Escape, {}},
                              {QEvent::KeyPress, Qt::Key_Left, Qt::ShiftModifier},
                              {QEvent::KeyPress, Qt::Key_F5, Qt::ControlModifier},
                              {QEvent::KeyPress, Qt::Key_Plus, Qt::ShiftModifier, "+"}};
    for (const QKeyEvent &key : keys)
        out << whatToDo(&key) << '\n';
    QMouseEvent press(QEvent::MouseButtonPress, {}, QPointF(3, 4), Qt::LeftButton, Qt::LeftButton,
                      Qt::AltModifier | Qt::MetaModifier);
    press.setTimestamp(2500);
    show(press);

    //! [use]
    auto keyboard = std::make_shared<Keyboard>();
    dravelin::InputState::setCurrent(keyboard);
    keyboard->held = dravelin::Event::Shift | dravelin::Event::CapsLock;
    //! [use]
    out << "shift now " << dravelin::isShiftKeyPressed() << '\n';
    //! [snapshot]
    dravelin::ModifierKeyFlags flags;              // of now
    const bool only = flags.shiftKeyPressedOnly(); // caps lock does not count
    flags.setOptionKey(true);
    const quint64 before = flags.pressedCount(); // still 1
    flags.keyPressedCount();
    const quint64 after = flags.pressedCount(); // 2
    //! [snapshot]
    out << "only " << only << ", count " << before << ", then " << after << '\n';

    //! [discard]
    dravelin::discardAllMouseEvents(); // clicks made while the program was busy; keys stay
    dravelin::discardAllEvents();      // those too
    //! [discard]
}
