// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QPointF>
#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QEvent;
QT_END_NAMESPACE

namespace dravelin {

/// What an input event says, whichever of Qt's classes it has: type, modifiers, characters, time and place. Made
/// implicitly wherever a function takes an Event:
///
///     void Canvas::keyPressEvent(QKeyEvent *event)
///     {
///         if (dravelin::shiftKeyOnly(event) && dravelin::leftArrowKey(event))
///             extendSelection();
///     }
///
/// A value without a tie to the QEvent. From the main thread.
class DRAVELIN_EXPORT Event
{
public:
    /// The numbers are the bits of masks of events: `1 << Event::KeyDown`.
    enum Type : quint8 {
        NoType = 0, ///< no input event, or of another kind: touch, context menu, hover
        LeftMouseDown = 1,
        LeftMouseUp = 2,
        RightMouseDown = 3,
        RightMouseUp = 4,
        MouseMoved = 5, ///< with no button down
        LeftMouseDragged = 6,
        RightMouseDragged = 7,
        MouseEntered = 8,
        MouseExited = 9,
        KeyDown = 10,
        KeyUp = 11,
        FlagsChanged = 12, ///< a modifier key, pressed or released
        ScrollWheel = 22,
        OtherMouseDown = 25,
        OtherMouseUp = 26,
        OtherMouseDragged = 27
    };

    enum ModifierFlag : quint64 {
        CapsLock = 0x10000,
        Shift = 0x20000,
        Control = 0x40000,
        Option = 0x80000,   ///< Alt
        Command = 0x100000, ///< Super, the key that Qt calls Meta
        NumericPad = 0x200000,
        Help = 0x400000,
        Function = 0x800000
    };

    /// No event: without type, flags and characters.
    Event() = default;
    /// \param event any event; a null pointer and events that are no input make an event of type NoType
    /// \cost for a pointer event from the window system, a query of the X server: it does not tell about caps lock
    Event(const QEvent *event);                   // NOLINT(google-explicit-constructor)
    Event(const QEvent &event) : Event(&event) {} // NOLINT(google-explicit-constructor)

    /// The kind of event. A double click counts as a press, a pen as a mouse; dragging with several buttons is that of
    /// the first in the order left, right, other.
    [[nodiscard]] Type type() const noexcept { return m_type; }

    /// The modifiers, a sum of ModifierFlag. Those of a modifier key's own event are as they are after it. Beyond what
    /// is held, keys of the numeric pad bear NumericPad, the key Help bears Help, and F1 to F35 bear Function. Arrow and
    /// navigation keys bear none, so that shift and an arrow are shift only. Caps lock is known for events from the
    /// window system; an event of caps lock itself has the state at the time of asking. 0 for MouseExited.
    /// \operation{modifierFlags}
    [[nodiscard]] quint64 modifierFlags() const noexcept { return m_modifierFlags; }

    /// The text of a key event, empty for keys without one, absent for other events. Keys without text have one unit:
    /// 0xF700 up, 0xF701 down, 0xF702 left, 0xF703 right, 0xF704 to 0xF726 F1 to F35, 0xF727 insert, 0xF728 delete,
    /// 0xF729 home, 0xF72B end, 0xF72C page up, 0xF72D page down, 0xF72E print, 0xF72F scroll lock, 0xF730 pause,
    /// 0xF735 menu, 0xF746 help; 27 escape, 13 return and enter, 9 tab, 25 tab with shift, 127 backspace.
    /// \operation{characters}
    [[nodiscard]] QString characters() const { return m_characters; }

    /// Seconds on the window system's clock, which InputState::currentTime() tells; 0 when the event bears no time.
    /// \operation{timestamp}
    [[nodiscard]] double timestamp() const noexcept { return m_timestamp; }

    /// Where the pointer was, in the coordinates of currentMouseLocation(); the zero point for events without a place.
    [[nodiscard]] QPointF location() const noexcept { return m_location; }

private:
    Type m_type = NoType;
    quint64 m_modifierFlags = 0;
    QString m_characters;
    double m_timestamp = 0;
    QPointF m_location;
};

} // namespace dravelin
