// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/event.h>

#include <QtCore/QPointF>

namespace dravelin {

/// What one event says. Every function takes any QEvent, by pointer or reference:
///
///     if (dravelin::commandKeyOnly(event) && dravelin::isCharacter(event, "d"))
///         duplicate();
inline namespace Keyboard {

/// \name Whether the event has the modifier
/// Event::modifierFlags() says which key is which.
/// @{
/// \operation{capsLockKey}
[[nodiscard]] DRAVELIN_EXPORT bool capsLockKey(const Event &event) noexcept;
/// \operation{shiftKey}
[[nodiscard]] DRAVELIN_EXPORT bool shiftKey(const Event &event) noexcept;
/// \operation{controlKey}
[[nodiscard]] DRAVELIN_EXPORT bool controlKey(const Event &event) noexcept;
/// \operation{optionKey}
[[nodiscard]] DRAVELIN_EXPORT bool optionKey(const Event &event) noexcept;
/// \operation{commandKey}
[[nodiscard]] DRAVELIN_EXPORT bool commandKey(const Event &event) noexcept;
/// \operation{numericPadKey}
[[nodiscard]] DRAVELIN_EXPORT bool numericPadKey(const Event &event) noexcept;
/// \operation{helpKey}
[[nodiscard]] DRAVELIN_EXPORT bool helpKey(const Event &event) noexcept;
/// \operation{functionKey}
[[nodiscard]] DRAVELIN_EXPORT bool functionKey(const Event &event) noexcept;
/// @}

/// How many of these eight the event has, 0 to 8.
/// \operation{modifierPressedCount}
[[nodiscard]] DRAVELIN_EXPORT quint64 modifierPressedCount(const Event &event) noexcept;

/// \name Whether the event has the modifier and no other of the eight
/// Caps lock is one of them: with caps lock on, shift is never the only one.
/// @{
/// \operation{capsLockKeyOnly}
[[nodiscard]] DRAVELIN_EXPORT bool capsLockKeyOnly(const Event &event) noexcept;
/// \operation{shiftKeyOnly}
[[nodiscard]] DRAVELIN_EXPORT bool shiftKeyOnly(const Event &event) noexcept;
/// \operation{controlKeyOnly}
[[nodiscard]] DRAVELIN_EXPORT bool controlKeyOnly(const Event &event) noexcept;
/// \operation{optionKeyOnly}
[[nodiscard]] DRAVELIN_EXPORT bool optionKeyOnly(const Event &event) noexcept;
/// \operation{commandKeyOnly}
[[nodiscard]] DRAVELIN_EXPORT bool commandKeyOnly(const Event &event) noexcept;
/// \operation{numericPadKeyOnly}
[[nodiscard]] DRAVELIN_EXPORT bool numericPadKeyOnly(const Event &event) noexcept;
/// \operation{helpKeyOnly}
[[nodiscard]] DRAVELIN_EXPORT bool helpKeyOnly(const Event &event) noexcept;
/// \operation{functionKeyOnly}
[[nodiscard]] DRAVELIN_EXPORT bool functionKeyOnly(const Event &event) noexcept;
/// @}

/// \name Whether the first unit of the event's characters is the key's
/// False for an event without characters.
/// @{
/// \operation{upArrowKey}
[[nodiscard]] DRAVELIN_EXPORT bool upArrowKey(const Event &event);
/// \operation{downArrowKey}
[[nodiscard]] DRAVELIN_EXPORT bool downArrowKey(const Event &event);
/// \operation{leftArrowKey}
[[nodiscard]] DRAVELIN_EXPORT bool leftArrowKey(const Event &event);
/// \operation{rightArrowKey}
[[nodiscard]] DRAVELIN_EXPORT bool rightArrowKey(const Event &event);
/// \operation{escapeKey}
[[nodiscard]] DRAVELIN_EXPORT bool escapeKey(const Event &event);
/// @}

/// Whether the event's characters are exactly the text. Absent ones, those of an event that is no key's, equal nothing.
/// \operation{isCharacter:}
[[nodiscard]] DRAVELIN_EXPORT bool isCharacter(const Event &event, const QString &text);

} // namespace Keyboard

/// \name What is held now
/// Read from InputState::current(), whatever event is being handled.
/// \cost a round trip to the X server each
/// @{
/// \operation{isCommandKeyPressed}
[[nodiscard]] DRAVELIN_EXPORT bool isCommandKeyPressed();
/// \operation{isOptionKeyPressed}
[[nodiscard]] DRAVELIN_EXPORT bool isOptionKeyPressed();
/// \operation{isShiftKeyPressed}
[[nodiscard]] DRAVELIN_EXPORT bool isShiftKeyPressed();
/// \operation{isControlKeyPressed}
[[nodiscard]] DRAVELIN_EXPORT bool isControlKeyPressed();
/// \operation{isLeftMouseButtonPressed}
[[nodiscard]] DRAVELIN_EXPORT bool isLeftMouseButtonPressed();
/// \operation{isRightMouseButtonPressed}
[[nodiscard]] DRAVELIN_EXPORT bool isRightMouseButtonPressed();
/// @}

/// Where the pointer is now: points from the lower left corner of the primary screen, y upwards; see
/// InputState::mouseLocation().
/// \operation{currentMouseLocation}
[[nodiscard]] DRAVELIN_EXPORT QPointF currentMouseLocation();

/// Whether the application's current event is a press of the left button. It stays the current one until the next input
/// event; see InputState::currentEvent().
/// \operation{isMouseDownEvent}
[[nodiscard]] DRAVELIN_EXPORT bool isMouseDownEvent();

/// Throws away all keyboard and mouse events that were queued before the call, such as those of an impatient user while
/// the application was busy. Allowed within an event handler; see InputState::discardEvents().
/// \operation{discardAllEvents}
DRAVELIN_EXPORT void discardAllEvents();

/// The same for the mouse alone: left and right button, moves, entering and leaving. Keys, the wheel and further buttons
/// stay queued.
/// \operation{discardAllMouseEvents}
DRAVELIN_EXPORT void discardAllMouseEvents();

/// The four main modifiers at one moment, and how many they are.
///
///     const dravelin::ModifierKeyFlags held;
///     if (held.shiftKeyPressedOnly())      // whatever caps lock is
///         extendSelection();
///
/// Setting a key leaves pressedCount() as it is until keyPressedCount() or refresh().
class DRAVELIN_EXPORT ModifierKeyFlags
{
public:
    /// The state of now.
    /// \operation{init}
    ModifierKeyFlags() { refresh(); }

    /// Takes the state of now from InputState::current(), with one query.
    /// \operation{refresh}
    void refresh();
    /// Counts the keys anew.
    /// \operation{keyPressedCount}
    void keyPressedCount() noexcept;
    /// No key and a count of 0.
    /// \operation{clear}
    void clear() noexcept;

    /// \name Whether the key is set and the count is 1
    /// The count is that of the last refresh() or keyPressedCount(). Caps lock is none of the four.
    /// @{
    /// \operation{shiftKeyPressedOnly}
    [[nodiscard]] bool shiftKeyPressedOnly() const noexcept { return m_shiftKey && m_pressedCount == 1; }
    /// \operation{controlKeyPressedOnly}
    [[nodiscard]] bool controlKeyPressedOnly() const noexcept { return m_controlKey && m_pressedCount == 1; }
    /// \operation{optionKeyPressedOnly}
    [[nodiscard]] bool optionKeyPressedOnly() const noexcept { return m_optionKey && m_pressedCount == 1; }
    /// \operation{commandKeyPressedOnly}
    [[nodiscard]] bool commandKeyPressedOnly() const noexcept { return m_commandKey && m_pressedCount == 1; }
    /// @}

    /// \operation{shiftKey}
    [[nodiscard]] bool shiftKey() const noexcept { return m_shiftKey; }
    /// \operation{setShiftKey:}
    void setShiftKey(bool pressed) noexcept { m_shiftKey = pressed; }
    /// \operation{controlKey}
    [[nodiscard]] bool controlKey() const noexcept { return m_controlKey; }
    /// \operation{setControlKey:}
    void setControlKey(bool pressed) noexcept { m_controlKey = pressed; }
    /// \operation{optionKey}
    [[nodiscard]] bool optionKey() const noexcept { return m_optionKey; }
    /// \operation{setOptionKey:}
    void setOptionKey(bool pressed) noexcept { m_optionKey = pressed; }
    /// \operation{commandKey}
    [[nodiscard]] bool commandKey() const noexcept { return m_commandKey; }
    /// \operation{setCommandKey:}
    void setCommandKey(bool pressed) noexcept { m_commandKey = pressed; }
    /// \operation{pressedCount}
    [[nodiscard]] quint64 pressedCount() const noexcept { return m_pressedCount; }

private:
    bool m_shiftKey = false;
    bool m_controlKey = false;
    bool m_optionKey = false;
    bool m_commandKey = false;
    quint64 m_pressedCount = 0;
};

} // namespace dravelin
