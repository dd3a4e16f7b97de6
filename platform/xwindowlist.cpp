// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xwindowlist.h"

#include "platform/processname.h"

#include <algorithm>

namespace dravelin {

namespace {

/// The windows of a screen, from the back to the front.
struct Tree
{
    Cards listed;   ///< by the window manager, or all on the root
    Cards topLevel; ///< those on the root
    QRect area;     ///< of the root
};

/// All that is asked about a window, sent before the first answer is read.
struct Questions
{
    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t origin;
    xcb_get_property_cookie_t pid, netName, name, extents, strutPartial, strut, state, type;
};

/// Whoever writes a property may write anything; the server's own coordinates have 16 bits.
int pixels(quint32 number) { return int(std::min(number, quint32(0x7FFF))); }

class Lister
{
public:
    explicit Lister(const XConnection &server) : m_server(server) {}

    [[nodiscard]] Tree tree() const
    {
        const xcb_get_geometry_cookie_t area = xcb_get_geometry(m_server.get(), m_server.root());
        const xcb_get_property_cookie_t managed = m_server.ask(m_server.root(), XAtom::ClientListStacking);
        const xcb_query_tree_cookie_t all = xcb_query_tree(m_server.get(), m_server.root());
        const QRect size = answer(area);
        const QByteArray list = m_server.answer(managed);
        const Cards topLevel = answer(all);
        return {list.isNull() ? topLevel : toCards(list), topLevel, size};
    }

    [[nodiscard]] Questions askAbout(xcb_window_t window) const
    {
        return {window,
                xcb_get_window_attributes(m_server.get(), window),
                xcb_get_geometry(m_server.get(), window),
                xcb_translate_coordinates(m_server.get(), window, m_server.root(), 0, 0),
                m_server.ask(window, XAtom::WmPid),
                m_server.ask(window, XAtom::WmName),
                m_server.ask(window, XCB_ATOM_WM_NAME),
                m_server.ask(window, XAtom::FrameExtents),
                m_server.ask(window, XAtom::StrutPartial),
                m_server.ask(window, XAtom::Strut),
                m_server.ask(window, XAtom::WmState),
                m_server.ask(window, XAtom::WindowType)};
    }

    /// \param area of the root
    /// \return false when the window is gone or not to be seen
    [[nodiscard]] bool describe(const Questions &asked, const QRect &area, WindowInfo &info) const
    {
        const bool isShown = readPlace(asked, info);
        const QByteArray netName = m_server.answer(asked.netName);
        const QByteArray name = m_server.answer(asked.name);
        info.name = netName.isNull() ? QString::fromLatin1(name) : QString::fromUtf8(netName);
        const Cards pid = m_server.cards(asked.pid);
        info.processId = pid.empty() ? 0 : pid.front();
        readClaim(asked, area, info);
        return readState(asked, info) && isShown;
    }

private:
    [[nodiscard]] QRect answer(xcb_get_geometry_cookie_t asked) const
    {
        const detail::XcbReply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(m_server.get(), asked, nullptr));
        return reply ? QRect(reply->x, reply->y, reply->width, reply->height) : QRect();
    }

    [[nodiscard]] Cards answer(xcb_query_tree_cookie_t asked) const
    {
        const detail::XcbReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(m_server.get(), asked, nullptr));
        if (!tree)
            return {};
        const xcb_window_t *first = xcb_query_tree_children(tree.get());
        return {first, first + xcb_query_tree_children_length(tree.get())};
    }

    [[nodiscard]] bool readPlace(const Questions &asked, WindowInfo &info) const
    {
        const detail::XcbReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(m_server.get(), asked.attributes, nullptr));
        const QSize size = answer(asked.geometry).size();
        const detail::XcbReply<xcb_translate_coordinates_reply_t> origin(
            xcb_translate_coordinates_reply(m_server.get(), asked.origin, nullptr));
        const Cards frame = m_server.cards(asked.extents); // left, right, top, bottom
        if (!attributes || size.isEmpty() || !origin)
            return false;
        info.identifier = asked.window;
        info.bounds = QRect(QPoint(origin->dst_x, origin->dst_y), size);
        info.isDecorated = std::any_of(frame.begin(), frame.end(), [](quint32 width) { return width > 0; });
        if (frame.size() == 4)
            info.bounds.adjust(-pixels(frame[0]), -pixels(frame[2]), pixels(frame[1]), pixels(frame[3]));
        return attributes->map_state == XCB_MAP_STATE_VIEWABLE && attributes->_class != XCB_WINDOW_CLASS_INPUT_ONLY;
    }

    /// \return false when the window is hidden
    [[nodiscard]] bool readState(const Questions &asked, WindowInfo &info) const
    {
        const Cards state = m_server.cards(asked.state);
        const Cards type = m_server.cards(asked.type);
        const auto has = [this](const Cards &atoms, XAtom name) {
            return std::find(atoms.begin(), atoms.end(), m_server.atom(name)) != atoms.end();
        };
        info.isFullScreen = has(state, XAtom::FullScreen);
        info.isMaximized = has(state, XAtom::MaximizedWide) && has(state, XAtom::MaximizedHigh);
        info.isDock = has(type, XAtom::Dock);
        info.isDesktop = has(type, XAtom::Desktop);
        return !has(state, XAtom::Hidden);
    }

    /// Panels claim strips along the edges of the whole area: so many pixels from the left, right, top and bottom.
    void readClaim(const Questions &asked, const QRect &area, WindowInfo &info) const
    {
        const Cards partial = m_server.cards(asked.strutPartial);
        const Cards plain = m_server.cards(asked.strut);
        const Cards &claim = partial.size() >= 4 ? partial : plain;
        if (claim.size() >= 4 && std::any_of(claim.begin(), claim.begin() + 4, [](quint32 width) { return width > 0; }))
            info.workArea = area.adjusted(pixels(claim[0]), pixels(claim[2]), -pixels(claim[1]), -pixels(claim[3]));
    }

    const XConnection &m_server;
};

} // namespace

QList<WindowInfo> listXWindows(const XConnection &server, XWindowWatch *watch)
{
    const Lister lister(server);
    if (watch)
        watch->start();
    const Tree tree = lister.tree();
    if (watch)
        watch->add(tree.listed, tree.topLevel);
    std::vector<Questions> asked;
    for (const xcb_window_t window : tree.listed)
        asked.push_back(lister.askAbout(window));
    ProcessNames names;
    QList<WindowInfo> windows;
    for (const Questions &questions : asked) {
        if (WindowInfo info; lister.describe(questions, tree.area, info)) {
            info.ownerName = names.of(info.processId);
            windows.prepend(info);
        }
    }
    return windows;
}

} // namespace dravelin
