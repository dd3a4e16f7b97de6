// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xconnection.h"

#include <algorithm>

namespace dravelin {

namespace {

constexpr std::array<const char *, size_t(XAtom::Count)> atomNames{"_NET_CLIENT_LIST_STACKING",
                                                                   "_NET_WM_PID",
                                                                   "_NET_WM_NAME",
                                                                   "_NET_FRAME_EXTENTS",
                                                                   "_NET_WM_STRUT_PARTIAL",
                                                                   "_NET_WM_STRUT",
                                                                   "_NET_WM_STATE",
                                                                   "_NET_WM_STATE_HIDDEN",
                                                                   "_NET_WM_STATE_FULLSCREEN",
                                                                   "_NET_WM_STATE_MAXIMIZED_HORZ",
                                                                   "_NET_WM_STATE_MAXIMIZED_VERT",
                                                                   "_NET_WM_WINDOW_TYPE",
                                                                   "_NET_WM_WINDOW_TYPE_DOCK",
                                                                   "_NET_WM_WINDOW_TYPE_DESKTOP"};

} // namespace

XConnection::XConnection() : m_connection(xcb_connect(nullptr, &m_screen))
{
    if (isOpen())
        internAtoms();
}

void XConnection::internAtoms()
{
    std::array<xcb_intern_atom_cookie_t, atomNames.size()> asked;
    for (size_t i = 0; i < atomNames.size(); ++i)
        asked[i] = xcb_intern_atom(m_connection, false, quint16(qstrlen(atomNames[i])), atomNames[i]);
    for (size_t i = 0; i < atomNames.size(); ++i) {
        const detail::XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, asked[i], nullptr));
        m_atoms[i] = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }
}

bool XConnection::knows(xcb_atom_t atom) const
{
    return std::find(m_atoms.begin(), m_atoms.end(), atom) != m_atoms.end();
}

xcb_get_property_cookie_t XConnection::ask(xcb_window_t window, xcb_atom_t property) const
{
    constexpr quint32 mostWords = 64 * 1024;
    return xcb_get_property(m_connection, false, window, property, XCB_ATOM_ANY, 0, mostWords);
}

QByteArray XConnection::answer(xcb_get_property_cookie_t asked) const
{
    const detail::XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, asked, nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get())};
}

Cards XConnection::cards(xcb_get_property_cookie_t asked) const { return toCards(answer(asked)); }

Cards toCards(const QByteArray &bytes)
{
    Cards numbers(size_t(bytes.size()) / sizeof(quint32));
    std::copy_n(bytes.constData(), numbers.size() * sizeof(quint32), reinterpret_cast<char *>(numbers.data()));
    return numbers;
}

detail::XcbReply<xcb_generic_event_t> XConnection::nextEvent() const
{
    return detail::XcbReply<xcb_generic_event_t>(xcb_poll_for_event(m_connection));
}

void XConnection::synchronise() const
{
    std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

} // namespace dravelin
