// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/event.h>

#include <memory>

namespace dravelin {

/// What keyboard and mouse do now, and the events that wait. Tests put one of their own in its place:
///
///     class ShiftHeld : public dravelin::InputState {
///         quint64 modifierFlags() override { return dravelin::Event::Shift; }
///     };
///     dravelin::InputState::setCurrent(std::make_shared<ShiftHeld>());
///
/// The default asks the X server that `DISPLAY` names, over a connection that it keeps, when the application runs on Qt's
/// platform xcb or has no QGuiApplication. Elsewhere, and without a server, it tells what QGuiApplication knows: that
/// lags behind by the events that are still queued, and lacks caps lock, which counts as off.
///
/// From the main thread.
class DRAVELIN_EXPORT InputState
{
public:
    virtual ~InputState();

    /// The modifiers that the keyboard holds now, a sum of Event::ModifierFlag: caps lock, shift, control, option and
    /// command. Which keys are option and command (Alt and Super) is read from the server's keyboard map.
    /// \cost a round trip to the X server
    /// \operation{modifierFlags}
    [[nodiscard]] virtual quint64 modifierFlags();

    /// The buttons that are down: bit 0 the left, bit 1 the right, bit 2 the middle one.
    /// \cost a round trip to the X server
    /// \operation{pressedMouseButtons}
    [[nodiscard]] virtual quint64 pressedMouseButtons();

    /// Where the pointer is, in points from the lower left corner of the primary screen, y upwards. The place is the
    /// upper left corner of the pixel under the pointer's tip: in the topmost row y is the height of the screen, in the
    /// lowest one it is 1. The zero point when nobody knows.
    /// \cost a round trip to the X server
    /// \operation{mouseLocation}
    [[nodiscard]] virtual QPointF mouseLocation();

    /// The input event that the application handles, and afterwards the last one until the next comes; without type
    /// before the first. When a nested event loop (that of a dialog, say) has ended, it is the event that opened it
    /// again; QCoreApplication::processEvents() is no such loop. That a widget is entered
    /// or left within its window belongs to the event that caused it. Events that were discarded, and those that an event
    /// filter of the application has taken, do not count.
    /// \operation{currentEvent}
    [[nodiscard]] virtual Event currentEvent();

    /// Seconds on the clock of Event::timestamp(). Without an X server that clock is estimated from the events that
    /// came: it is behind by the shortest delay with which one was handled, and 0 before the first.
    /// \cost a round trip to the X server
    [[nodiscard]] virtual double currentTime();

    /// Input events that wait in the queue are not delivered, if their type is in the mask and they are not younger than
    /// the time. No other events are touched: timers, painting, calls and requests to close go on. The call itself handles
    /// no events; the discarded ones vanish when their turn comes, and all others arrive in their order.
    ///
    /// Events without a time are discarded as well: those of the mouse entering and leaving that the event loop brings in
    /// its next passes (a widget's `underMouse()` is kept right), and those that the application itself has posted, by
    /// their Qt type: presses, releases and moves when the mask has both left and right.
    ///
    /// A widget that got a press and whose release is discarded goes on waiting for it.
    /// \param mask bits `1 << type`; bit 0 stands for all other input events
    /// \param before seconds, see currentTime()
    /// \operation{discardEventsMatchingMask:beforeEvent:}
    virtual void discardEvents(quint64 mask, double before);

    /// The input state in use.
    [[nodiscard]] static std::shared_ptr<InputState> current();

    /// Replaces the process's input state; an empty pointer brings the default back.
    /// \return the one that was replaced, empty for the default one
    static std::shared_ptr<InputState> setCurrent(std::shared_ptr<InputState> state);
};

} // namespace dravelin
