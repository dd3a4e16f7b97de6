// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/event.h>

#include <dravelin/platform/display.h>
#include <dravelin/platform/inputstate.h>

#include "platform/inputevents.h"

#include <QtGui/QInputEvent>

#include <array>
#include <utility>

namespace dravelin {

namespace {

/// The keys whose characters are not the text that Qt has for them.
constexpr std::array specialKeys{
    std::pair{Qt::Key_Up, 0xF700},       std::pair{Qt::Key_Down, 0xF701},   std::pair{Qt::Key_Left, 0xF702},
    std::pair{Qt::Key_Right, 0xF703},    std::pair{Qt::Key_Insert, 0xF727}, std::pair{Qt::Key_Delete, 0xF728},
    std::pair{Qt::Key_Home, 0xF729},     std::pair{Qt::Key_End, 0xF72B},    std::pair{Qt::Key_PageUp, 0xF72C},
    std::pair{Qt::Key_PageDown, 0xF72D}, std::pair{Qt::Key_Print, 0xF72E},  std::pair{Qt::Key_ScrollLock, 0xF72F},
    std::pair{Qt::Key_Pause, 0xF730},    std::pair{Qt::Key_Menu, 0xF735},   std::pair{Qt::Key_Help, 0xF746},
    std::pair{Qt::Key_Escape, 27},       std::pair{Qt::Key_Return, 13},     std::pair{Qt::Key_Enter, 13},
    std::pair{Qt::Key_Tab, 9},           std::pair{Qt::Key_Backtab, 25},    std::pair{Qt::Key_Backspace, 127},
};
constexpr char16_t firstFunctionKey = 0xF704;

bool isFunctionKey(int key) { return key >= Qt::Key_F1 && key <= Qt::Key_F35; }

bool isModifierKey(int key)
{
    return (key >= Qt::Key_Shift && key <= Qt::Key_CapsLock) || (key >= Qt::Key_Super_L && key <= Qt::Key_Super_R)
           || key == Qt::Key_AltGr;
}

QString charactersOf(const QKeyEvent &event)
{
    const int key = event.key();
    if (isFunctionKey(key))
        return QChar(char16_t(firstFunctionKey + (key - Qt::Key_F1)));
    for (const auto &[special, unit] : specialKeys) {
        if (special == key)
            return QChar(char16_t(unit));
    }
    const QString text = event.text();
    return text.isNull() ? QLatin1String("") : text;
}

Event::Type keyType(const QKeyEvent &event)
{
    if (isModifierKey(event.key()))
        return Event::FlagsChanged;
    return event.type() == QEvent::KeyRelease ? Event::KeyUp : Event::KeyDown;
}

Event::Type byButton(Qt::MouseButtons buttons, Event::Type left, Event::Type right, Event::Type other)
{
    if (buttons & Qt::LeftButton)
        return left;
    return buttons & Qt::RightButton ? right : other;
}

Event::Type moveType(Qt::MouseButtons buttons)
{
    if (buttons == Qt::NoButton)
        return Event::MouseMoved;
    return byButton(buttons, Event::LeftMouseDragged, Event::RightMouseDragged, Event::OtherMouseDragged);
}

quint64 capsLockNow() { return InputState::current()->modifierFlags() & Event::CapsLock; }

quint64 ownModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
        return Event::Shift;
    case Qt::Key_Control:
        return Event::Control;
    case Qt::Key_Alt:
        return Event::Option;
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
        return Event::Command;
    default:
        return 0;
    }
}

/// Native modifiers are a mask of the X protocol's bits, on Wayland as well.
quint64 flagsOf(const QKeyEvent &event)
{
    constexpr quint32 lockMask = 1U << 1U;
    // Qt turns the modifier of the key itself round, which goes wrong with two keys of one kind.
    quint64 flags = modifierFlagsOf(event.QInputEvent::modifiers());
    const quint64 own = ownModifier(event.key());
    flags = event.type() == QEvent::KeyRelease ? flags & ~own : flags | own;
    if (event.key() == Qt::Key_CapsLock)
        flags |= capsLockNow();
    else if (event.nativeModifiers() & lockMask)
        flags |= Event::CapsLock;
    if (event.key() == Qt::Key_Help)
        flags |= Event::Help;
    return isFunctionKey(event.key()) ? flags | Event::Function : flags;
}

bool isKey(const QEvent &event)
{
    return event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease
           || event.type() == QEvent::ShortcutOverride;
}

} // namespace

quint64 modifierFlagsOf(Qt::KeyboardModifiers modifiers)
{
    const auto flag = [modifiers](Qt::KeyboardModifier held, quint64 value) { return modifiers & held ? value : 0; };
    return flag(Qt::ShiftModifier, Event::Shift) | flag(Qt::ControlModifier, Event::Control)
           | flag(Qt::AltModifier, Event::Option) | flag(Qt::MetaModifier, Event::Command)
           | flag(Qt::KeypadModifier, Event::NumericPad);
}

Event::Type eventType(const QEvent &event)
{
    const auto button = [&] { return static_cast<const QSinglePointEvent &>(event).button(); };
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TabletPress:
        return byButton(button(), Event::LeftMouseDown, Event::RightMouseDown, Event::OtherMouseDown);
    case QEvent::MouseButtonRelease:
    case QEvent::TabletRelease:
        return byButton(button(), Event::LeftMouseUp, Event::RightMouseUp, Event::OtherMouseUp);
    case QEvent::MouseMove:
    case QEvent::TabletMove:
        return moveType(static_cast<const QSinglePointEvent &>(event).buttons());
    case QEvent::Enter:
        return Event::MouseEntered;
    case QEvent::Leave:
        return Event::MouseExited;
    case QEvent::Wheel:
        return Event::ScrollWheel;
    default:
        return isKey(event) ? keyType(static_cast<const QKeyEvent &>(event)) : Event::NoType;
    }
}

quint64 eventTime(const QEvent &event)
{
    return event.isInputEvent() ? static_cast<const QInputEvent &>(event).timestamp() : 0;
}

QPointF upwardPoint(QPointF place)
{
    const QRect primary = DisplayService::current()->screens().value(0);
    if (primary.isNull())
        return {};
    return {place.x() - primary.x(), primary.y() + primary.height() - place.y()};
}

Event::Event(const QEvent *event)
{
    if (!event)
        return;
    m_type = eventType(*event);
    m_timestamp = double(eventTime(*event)) / 1000;
    if (event->isSinglePointEvent())
        m_location = upwardPoint(static_cast<const QSinglePointEvent *>(event)->globalPosition());
    if (isKey(*event)) {
        const auto &keyEvent = static_cast<const QKeyEvent &>(*event);
        m_characters = charactersOf(keyEvent);
        m_modifierFlags = flagsOf(keyEvent);
    } else if (event->isInputEvent()) {
        m_modifierFlags = modifierFlagsOf(static_cast<const QInputEvent *>(event)->modifiers());
        if (event->spontaneous())
            m_modifierFlags |= capsLockNow();
    }
}

} // namespace dravelin
