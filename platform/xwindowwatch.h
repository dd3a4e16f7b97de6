// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/xconnection.h"

#include <QtCore/QPointer>
#include <QtCore/QSocketNotifier>

#include <set>

namespace dravelin {

/// Hears from the X server whether windows changed since they were listed. It is told what to listen to before anything is
/// asked about a window, so that it misses no change.
///
/// The server keeps what it tells until it is read. So the watch ends with the first change, or when something else was
/// told twice without anybody asking meanwhile, and never begins where no event loop would read.
class XWindowWatch
{
public:
    explicit XWindowWatch(const XConnection &server) : m_server(server) {}
    ~XWindowWatch();
    Q_DISABLE_COPY_MOVE(XWindowWatch)

    /// Whether this is the application's main thread, and runs its event loop.
    [[nodiscard]] static bool isPossible();

    /// Listens to all windows being opened, closed, moved and restacked, and to the window manager's list.
    void start();

    /// Listens to these windows as well, and to those that they are in.
    /// \param topLevel those on the root, of which start() hears enough
    void add(const Cards &windows, const Cards &topLevel);

    /// Whether the watch was started and nothing has changed since, up to now.
    /// \cost a round trip
    [[nodiscard]] bool sawNoChange();

private:
    void stop();
    void read();
    void wake();
    void listen(xcb_window_t window, quint32 events);
    [[nodiscard]] bool isChange(const xcb_generic_event_t &event) const;
    [[nodiscard]] Cards parents(const Cards &windows) const;

    const XConnection &m_server;
    QPointer<QSocketNotifier> m_notifier; ///< the application's
    std::set<xcb_window_t> m_windows;     ///< listened to
    bool m_isAsked = false;               ///< since the notifier woke us
};

} // namespace dravelin
