// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/xcbreply.h"

#include <QtCore/QByteArray>

#include <array>
#include <vector>

namespace dravelin {

/// What a property of an X server lists: numbers, atoms, windows.
using Cards = std::vector<quint32>;
[[nodiscard]] Cards toCards(const QByteArray &bytes);

/// Names that window managers and applications agree on.
enum class XAtom : quint8 {
    ClientListStacking,
    WmPid,
    WmName,
    FrameExtents,
    StrutPartial,
    Strut,
    WmState,
    Hidden,
    FullScreen,
    MaximizedWide,
    MaximizedHigh,
    WindowType,
    Dock,
    Desktop,
    Count
};

/// A connection of its own to the X server of `DISPLAY`, for questions about windows.
class XConnection
{
public:
    XConnection();
    ~XConnection() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY_MOVE(XConnection)

    /// False without a server, and when a question showed that it is gone.
    [[nodiscard]] bool isOpen() const { return xcb_connection_has_error(m_connection) == 0; }

    [[nodiscard]] xcb_connection_t *get() const { return m_connection; }
    [[nodiscard]] xcb_window_t root() const { return detail::screenOf(m_connection, m_screen)->root; }
    [[nodiscard]] xcb_atom_t atom(XAtom name) const { return m_atoms[size_t(name)]; }
    /// Whether it is one of XAtom.
    [[nodiscard]] bool knows(xcb_atom_t atom) const;

    [[nodiscard]] xcb_get_property_cookie_t ask(xcb_window_t window, xcb_atom_t property) const;
    [[nodiscard]] xcb_get_property_cookie_t ask(xcb_window_t window, XAtom name) const
    {
        return ask(window, atom(name));
    }
    /// Null when the window is gone or does not have the property.
    [[nodiscard]] QByteArray answer(xcb_get_property_cookie_t asked) const;
    /// The same as numbers; none when there is no answer.
    [[nodiscard]] Cards cards(xcb_get_property_cookie_t asked) const;

    /// The next event that came, without waiting; empty when there is none.
    [[nodiscard]] detail::XcbReply<xcb_generic_event_t> nextEvent() const;
    /// Waits for the server, whose events up to now have come by then.
    void synchronise() const;

private:
    void internAtoms();

    int m_screen = 0;
    xcb_connection_t *m_connection;
    std::array<xcb_atom_t, size_t(XAtom::Count)> m_atoms{};
};

} // namespace dravelin
