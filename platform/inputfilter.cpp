// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/inputfilter.h"

#include "platform/inputevents.h"

#include <QtCore/QPointer>
#include <QtCore/QThread>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <array>
#include <chrono>

namespace dravelin {

namespace {

constexpr quint64 bit(Event::Type type) { return quint64(1) << type; }
constexpr quint64 enteringOrLeaving = bit(Event::MouseEntered) | bit(Event::MouseExited);

/// Posted events are removed by their Qt type, which covers several of ours.
struct PostedType
{
    QEvent::Type type;
    quint64 needed;
};
constexpr std::array postedTypes{
    PostedType{QEvent::MouseButtonPress, bit(Event::LeftMouseDown) | bit(Event::RightMouseDown)},
    PostedType{QEvent::MouseButtonDblClick, bit(Event::LeftMouseDown) | bit(Event::RightMouseDown)},
    PostedType{QEvent::MouseButtonRelease, bit(Event::LeftMouseUp) | bit(Event::RightMouseUp)},
    PostedType{QEvent::MouseMove,
               bit(Event::MouseMoved) | bit(Event::LeftMouseDragged) | bit(Event::RightMouseDragged)},
    PostedType{QEvent::KeyPress, bit(Event::KeyDown) | bit(Event::FlagsChanged)},
    PostedType{QEvent::KeyRelease, bit(Event::KeyUp) | bit(Event::FlagsChanged)},
    PostedType{QEvent::Wheel, bit(Event::ScrollWheel)},
};

QPointer<InputFilter> &theFilter()
{
    static QPointer<InputFilter> filter;
    return filter;
}

/// Hover events are made while other events are handled and never wait.
bool waitsInQueue(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::HoverMove:
        return false;
    case QEvent::Leave:
        return true;
    default:
        return event.isInputEvent();
    }
}

/// That a widget is entered or left follows from another event, or from a window that opens or closes.
bool isEventOfItsOwn(const QEvent &event)
{
    const quint64 type = bit(eventType(event));
    return type != bit(Event::NoType) && (event.spontaneous() || !(type & enteringOrLeaving));
}

qint64 now()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

/// The window of a widget keeps account of pressed buttons and of the widget under the mouse. It sees the ends of both
/// even when its widgets do not.
bool isForBookkeeping(const QObject &receiver, QEvent::Type type)
{
    const bool isEnd = type == QEvent::MouseButtonRelease || type == QEvent::Enter || type == QEvent::Leave;
    return isEnd && receiver.inherits("QWidgetWindow");
}

/// What the widget's own handling leaves out when a discarded event does not come.
void settle(QObject &receiver, QEvent &event)
{
    auto *widget = qobject_cast<QWidget *>(&receiver);
    if (widget && (event.type() == QEvent::Enter || event.type() == QEvent::Leave))
        widget->setAttribute(Qt::WA_UnderMouse, event.type() == QEvent::Enter);
    event.accept(); // a key that is no shortcut either
}

void watchApplication()
{
    if (auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        theFilter() = new InputFilter(application); // which owns it
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watchApplication)

InputFilter::InputFilter(QObject *application) : QObject(application) { application->installEventFilter(this); }

InputFilter *InputFilter::instance() { return theFilter(); }

bool InputFilter::eventFilter(QObject *receiver, QEvent *event)
{
    if (!waitsInQueue(*event))
        return false;
    if (event->spontaneous())
        learnClock(eventTime(*event));
    if (!isDiscarded(*event)) {
        remember(*event);
        return false;
    }
    if (isForBookkeeping(*receiver, event->type()))
        return false;
    settle(*receiver, *event);
    return true;
}

void InputFilter::learnClock(quint64 time)
{
    if (time != 0)
        m_clockOffset = std::max(qint64(time) - now(), m_clockOffset.value_or(std::numeric_limits<qint64>::min()));
}

qint64 InputFilter::estimatedTime() const { return m_clockOffset ? now() + *m_clockOffset : 0; }

void InputFilter::discard(quint64 mask, quint32 before)
{
    QCoreApplication::instance()->installEventFilter(this); // before those that were installed since
    for (const PostedType &posted : postedTypes) {
        if ((mask & posted.needed) == posted.needed)
            QCoreApplication::removePostedEvents(nullptr, posted.type);
    }
    std::erase_if(m_discarded, [mask](const Discarded &other) { return other.mask == mask; });
    m_discarded.push_back({mask, before});
    m_untimedMask |= mask & enteringOrLeaving;
    m_passesLeft = 2;
    m_untimed.start(0, this);
}

bool InputFilter::isDiscarded(const QEvent &event)
{
    if (m_discarded.empty() && m_untimedMask == 0)
        return false;
    const quint64 type = bit(eventType(event));
    const quint64 time = eventTime(event);
    return time == 0 ? (type & m_untimedMask) != 0 : isDiscarded(type, quint32(time));
}

/// Events come in the order of their times: what is younger ends the discarding. So does what is older than any queue, the
/// clock of made-up events, say.
bool InputFilter::isDiscarded(quint64 bit, quint32 time)
{
    constexpr quint32 longestWait = 3'600'000; // milliseconds
    std::erase_if(m_discarded, [time](const Discarded &discarded) { return discarded.before - time > longestWait; });
    return std::any_of(m_discarded.begin(), m_discarded.end(),
                       [bit](const Discarded &discarded) { return (discarded.mask & bit) != 0; });
}

/// What waited when events were discarded has come after two passes of the event loop: the first one takes it from the
/// window system.
void InputFilter::timerEvent(QTimerEvent *)
{
    if (--m_passesLeft > 0)
        return;
    m_untimed.stop();
    m_untimedMask = 0;
}

void InputFilter::remember(const QEvent &event)
{
    if (!isEventOfItsOwn(event))
        return;
    forgetEndedLoops();
    const int level = QThread::currentThread()->loopLevel();
    if (m_current.empty() || m_current.back().loopLevel < level)
        m_current.push_back({level, nullptr});
    m_current.back().event.reset(event.clone());
}

void InputFilter::forgetEndedLoops()
{
    const int level = QThread::currentThread()->loopLevel();
    std::erase_if(m_current, [level](const Handled &handled) { return handled.loopLevel > level; });
}

const QEvent *InputFilter::current()
{
    forgetEndedLoops();
    return m_current.empty() ? nullptr : m_current.back().event.get();
}

} // namespace dravelin
