// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xwindowwatch.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <utility>

namespace dravelin {

XWindowWatch::~XWindowWatch()
{
    if (m_notifier)
        m_notifier->disconnect();
    delete m_notifier;
}

bool XWindowWatch::isPossible()
{
    QThread *thread = QThread::currentThread();
    return QCoreApplication::instance() && QCoreApplication::instance()->thread() == thread && thread->loopLevel() > 0;
}

void XWindowWatch::start()
{
    stop();
    if (!m_notifier) {
        const int descriptor = xcb_get_file_descriptor(m_server.get());
        m_notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, QCoreApplication::instance());
        QObject::connect(m_notifier, &QSocketNotifier::activated, [this] { wake(); });
        QObject::connect(m_notifier, &QObject::destroyed, [this] { stop(); });
    }
    m_notifier->setEnabled(true);
    m_isAsked = true;
    // The structure of the root is its own size.
    listen(m_server.root(),
           XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
}

void XWindowWatch::stop()
{
    for (const xcb_window_t window : std::exchange(m_windows, {})) {
        const quint32 nothing = XCB_EVENT_MASK_NO_EVENT;
        xcb_change_window_attributes(m_server.get(), window, XCB_CW_EVENT_MASK, &nothing);
    }
    xcb_flush(m_server.get());
    if (m_notifier)
        m_notifier->setEnabled(false);
}

void XWindowWatch::listen(xcb_window_t window, quint32 events)
{
    m_windows.insert(window);
    xcb_change_window_attributes(m_server.get(), window, XCB_CW_EVENT_MASK, &events);
}

/// Window managers put windows into frames, some of them into several.
void XWindowWatch::add(const Cards &windows, const Cards &topLevel)
{
    const std::set<xcb_window_t> onRoot(topLevel.begin(), topLevel.end());
    const auto isOnRoot = [&](xcb_window_t window) { return onRoot.count(window) > 0; };
    for (const xcb_window_t window : windows) {
        if (window != m_server.root()) // which hears more; anyone may write a list that has it
            listen(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE);
    }
    for (Cards inner = windows; !inner.empty(); inner = parents(inner)) {
        std::erase_if(inner, isOnRoot);
        for (const xcb_window_t window : inner) {
            if (m_windows.count(window) == 0)
                listen(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        }
    }
}

/// Without the root.
Cards XWindowWatch::parents(const Cards &windows) const
{
    std::vector<xcb_query_tree_cookie_t> asked;
    for (const xcb_window_t window : windows)
        asked.push_back(xcb_query_tree(m_server.get(), window));
    Cards parents;
    for (const xcb_query_tree_cookie_t cookie : asked) {
        const detail::XcbReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(m_server.get(), cookie, nullptr));
        if (tree && tree->parent != tree->root && tree->parent != XCB_WINDOW_NONE)
            parents.push_back(tree->parent);
    }
    return parents;
}

bool XWindowWatch::sawNoChange()
{
    m_isAsked = true;
    if (!m_windows.empty())
        m_server.synchronise();
    read();
    return !m_windows.empty();
}

void XWindowWatch::read()
{
    bool isChanged = false;
    while (const auto event = m_server.nextEvent())
        isChanged |= isChange(*event);
    if (isChanged)
        stop();
}

/// Between two questions.
void XWindowWatch::wake()
{
    read();
    if (!std::exchange(m_isAsked, false))
        stop();
}

bool XWindowWatch::isChange(const xcb_generic_event_t &event) const
{
    const int kind = event.response_type & 0x7F; // without the mark of events that a window manager sends
    if (kind != XCB_PROPERTY_NOTIFY)
        return kind >= XCB_CREATE_NOTIFY && kind <= XCB_CIRCULATE_NOTIFY;
    const xcb_atom_t property = reinterpret_cast<const xcb_property_notify_event_t &>(event).atom;
    return property == XCB_ATOM_WM_NAME || m_server.knows(property);
}

} // namespace dravelin
