// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/input.h>

#include <dravelin/platform/inputstate.h>

#include <bit>

namespace dravelin {

namespace {

constexpr quint64 allModifiers = Event::CapsLock | Event::Shift | Event::Control | Event::Option | Event::Command
                                 | Event::NumericPad | Event::Help | Event::Function;
constexpr quint64 allEvents = ~quint64(0);
constexpr quint64 mouseEvents = 0x3FE; // left and right buttons, moves, drags, entering and leaving

bool has(const Event &event, Event::ModifierFlag key) { return (event.modifierFlags() & key) != 0; }
bool hasOnly(const Event &event, Event::ModifierFlag key) { return (event.modifierFlags() & allModifiers) == key; }
bool startsWith(const Event &event, char16_t unit) { return event.characters().startsWith(QChar(unit)); }

bool isHeld(Event::ModifierFlag key) { return (InputState::current()->modifierFlags() & key) != 0; }
bool isDown(int button) { return (InputState::current()->pressedMouseButtons() >> button & 1) != 0; }

void discard(quint64 mask)
{
    const auto state = InputState::current();
    state->discardEvents(mask, state->currentTime());
}

} // namespace

inline namespace Keyboard {

bool capsLockKey(const Event &event) noexcept { return has(event, Event::CapsLock); }
bool shiftKey(const Event &event) noexcept { return has(event, Event::Shift); }
bool controlKey(const Event &event) noexcept { return has(event, Event::Control); }
bool optionKey(const Event &event) noexcept { return has(event, Event::Option); }
bool commandKey(const Event &event) noexcept { return has(event, Event::Command); }
bool numericPadKey(const Event &event) noexcept { return has(event, Event::NumericPad); }
bool helpKey(const Event &event) noexcept { return has(event, Event::Help); }
bool functionKey(const Event &event) noexcept { return has(event, Event::Function); }

quint64 modifierPressedCount(const Event &event) noexcept
{
    return quint64(std::popcount(event.modifierFlags() & allModifiers));
}

bool capsLockKeyOnly(const Event &event) noexcept { return hasOnly(event, Event::CapsLock); }
bool shiftKeyOnly(const Event &event) noexcept { return hasOnly(event, Event::Shift); }
bool controlKeyOnly(const Event &event) noexcept { return hasOnly(event, Event::Control); }
bool optionKeyOnly(const Event &event) noexcept { return hasOnly(event, Event::Option); }
bool commandKeyOnly(const Event &event) noexcept { return hasOnly(event, Event::Command); }
bool numericPadKeyOnly(const Event &event) noexcept { return hasOnly(event, Event::NumericPad); }
bool helpKeyOnly(const Event &event) noexcept { return hasOnly(event, Event::Help); }
bool functionKeyOnly(const Event &event) noexcept { return hasOnly(event, Event::Function); }

bool upArrowKey(const Event &event) { return startsWith(event, 0xF700); }
bool downArrowKey(const Event &event) { return startsWith(event, 0xF701); }
bool leftArrowKey(const Event &event) { return startsWith(event, 0xF702); }
bool rightArrowKey(const Event &event) { return startsWith(event, 0xF703); }
bool escapeKey(const Event &event) { return startsWith(event, 27); }

bool isCharacter(const Event &event, const QString &text)
{
    const QString characters = event.characters();
    return !characters.isNull() && !text.isNull() && characters == text;
}

} // namespace Keyboard

bool isCommandKeyPressed() { return isHeld(Event::Command); }
bool isOptionKeyPressed() { return isHeld(Event::Option); }
bool isShiftKeyPressed() { return isHeld(Event::Shift); }
bool isControlKeyPressed() { return isHeld(Event::Control); }
bool isLeftMouseButtonPressed() { return isDown(0); }
bool isRightMouseButtonPressed() { return isDown(1); }
QPointF currentMouseLocation() { return InputState::current()->mouseLocation(); }
bool isMouseDownEvent() { return InputState::current()->currentEvent().type() == Event::LeftMouseDown; }
void discardAllEvents() { discard(allEvents); }
void discardAllMouseEvents() { discard(mouseEvents); }

void ModifierKeyFlags::refresh()
{
    const quint64 flags = InputState::current()->modifierFlags();
    m_commandKey = (flags & Event::Command) != 0;
    m_optionKey = (flags & Event::Option) != 0;
    m_shiftKey = (flags & Event::Shift) != 0;
    m_controlKey = (flags & Event::Control) != 0;
    keyPressedCount();
}

void ModifierKeyFlags::keyPressedCount() noexcept
{
    m_pressedCount = quint64(m_commandKey) + quint64(m_optionKey) + quint64(m_shiftKey) + quint64(m_controlKey);
}

void ModifierKeyFlags::clear() noexcept
{
    m_shiftKey = m_controlKey = m_optionKey = m_commandKey = false;
    m_pressedCount = 0;
}

} // namespace dravelin
