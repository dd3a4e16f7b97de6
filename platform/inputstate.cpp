// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/inputstate.h>

#include "platform/inputevents.h"
#include "platform/inputfilter.h"
#include "platform/xinput.h"

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>

#include <algorithm>
#include <cmath>
#include <utility>

namespace dravelin {

namespace {

std::shared_ptr<InputState> &replacement()
{
    static std::shared_ptr<InputState> state;
    return state;
}

QGuiApplication *application() { return qobject_cast<QGuiApplication *>(QCoreApplication::instance()); }

/// Where Qt talks to another window system, an X server may be there that sees only a part of the input.
bool isOnX() { return !application() || QGuiApplication::platformName() == QLatin1String("xcb"); }

XInput &xInput()
{
    static XInput input;
    return input;
}

std::optional<XInputState> xState() { return isOnX() ? xInput().state() : std::nullopt; }

quint64 qtModifiers()
{
    if (!application())
        return 0;
    return modifierFlagsOf(QGuiApplication::queryKeyboardModifiers()) & ~quint64(Event::NumericPad);
}

quint64 qtButtons()
{
    if (!application())
        return 0;
    const Qt::MouseButtons down = QGuiApplication::mouseButtons();
    return (down & Qt::LeftButton ? 1 : 0) | (down & Qt::RightButton ? 2 : 0) | (down & Qt::MiddleButton ? 4 : 0);
}

} // namespace

InputState::~InputState() = default;

quint64 InputState::modifierFlags()
{
    const auto state = xState();
    return state ? state->modifierFlags : qtModifiers();
}

quint64 InputState::pressedMouseButtons()
{
    const auto state = xState();
    return state ? state->buttons : qtButtons();
}

/// Qt's own query knows how pixels are scaled to points.
QPointF InputState::mouseLocation()
{
    if (application())
        return upwardPoint(QCursor::pos());
    const auto state = xState();
    return state ? QPointF(state->pointer.x(), state->rootHeight - state->pointer.y()) : QPointF();
}

Event InputState::currentEvent()
{
    InputFilter *filter = InputFilter::instance();
    return filter ? Event(filter->current()) : Event();
}

double InputState::currentTime()
{
    const auto time = isOnX() ? xInput().time() : std::nullopt;
    if (time)
        return double(*time) / 1000;
    const InputFilter *filter = InputFilter::instance();
    return filter ? double(filter->estimatedTime()) / 1000 : 0;
}

void InputState::discardEvents(quint64 mask, double before)
{
    constexpr double longAgo = 3600; // nothing waits for an hour
    InputFilter *filter = InputFilter::instance();
    const double now = currentTime(); // what comes later does not wait yet
    if (filter && before > now - longAgo)
        filter->discard(mask, quint32(std::llround(std::min(before, now) * 1000)));
}

std::shared_ptr<InputState> InputState::current()
{
    return replacement() ? replacement() : std::make_shared<InputState>();
}

std::shared_ptr<InputState> InputState::setCurrent(std::shared_ptr<InputState> state)
{
    return std::exchange(replacement(), std::move(state));
}

} // namespace dravelin
