// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xwindows.h"

#include "platform/xcbreply.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

using Cards = std::vector<quint32>;

enum AtomName {
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
    Desktop
};
constexpr std::array atomNames{"_NET_CLIENT_LIST_STACKING",
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

/// All that is asked about a window, sent before the first answer is read.
struct Questions
{
    xcb_window_t window;
    xcb_get_window_attributes_cookie_t attributes;
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t origin;
    xcb_get_property_cookie_t pid, netName, name, extents, strutPartial, strut, state, type;
};

QString readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The kernel keeps 15 bytes of a process's name; the rest is taken from its command line.
QString processName(qint64 processId)
{
    const QString process = u"/proc/%1/"_s.arg(processId);
    QString name = readFile(process + u"comm"_s);
    name.chop(1);
    QString program = QFileInfo(readFile(process + u"cmdline"_s).section(QChar(u'\0'), 0, 0)).fileName();
    if (name.toUtf8().size() == 15 && program.startsWith(name))
        return program;
    return name.isEmpty() ? QString() : name;
}

/// Applications have several windows.
class ProcessNames
{
public:
    QString of(qint64 processId)
    {
        const auto known = m_names.constFind(processId);
        return known != m_names.cend() ? *known : *m_names.insert(processId, processName(processId));
    }

private:
    QHash<qint64, QString> m_names{{0, QString()}}; // 0 is unknown
};

Cards cards(const QByteArray &bytes)
{
    Cards numbers(size_t(bytes.size()) / sizeof(quint32));
    std::copy_n(bytes.constData(), numbers.size() * sizeof(quint32), reinterpret_cast<char *>(numbers.data()));
    return numbers;
}

bool contains(const Cards &numbers, quint32 number)
{
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

class XServer
{
public:
    XServer() : m_connection(xcb_connect(nullptr, &m_screen))
    {
        if (isConnected())
            internAtoms();
    }
    ~XServer() { xcb_disconnect(m_connection); }
    Q_DISABLE_COPY_MOVE(XServer)

    [[nodiscard]] bool isConnected() const { return xcb_connection_has_error(m_connection) == 0; }

    /// Throws away what the server tells every client unasked.
    void dropEvents()
    {
        while (const detail::XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)}) {
        }
    }

    /// From the back to the front. Takes note of the whole area as well, so that it takes no further round trip.
    [[nodiscard]] Cards windows()
    {
        const xcb_get_geometry_cookie_t area = xcb_get_geometry(m_connection, root());
        const xcb_get_property_cookie_t managed = ask(root(), m_atoms[ClientListStacking]);
        const xcb_query_tree_cookie_t all = xcb_query_tree(m_connection, root());
        noteArea(area);
        const QByteArray list = answer(managed);
        const detail::XcbReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(m_connection, all, nullptr));
        if (!list.isNull())
            return cards(list);
        if (!tree)
            return {};
        const xcb_window_t *first = xcb_query_tree_children(tree.get());
        return {first, first + xcb_query_tree_children_length(tree.get())};
    }

    [[nodiscard]] Questions askAbout(xcb_window_t window) const
    {
        return {window,
                xcb_get_window_attributes(m_connection, window),
                xcb_get_geometry(m_connection, window),
                xcb_translate_coordinates(m_connection, window, root(), 0, 0),
                ask(window, m_atoms[WmPid]),
                ask(window, m_atoms[WmName]),
                ask(window, XCB_ATOM_WM_NAME),
                ask(window, m_atoms[FrameExtents]),
                ask(window, m_atoms[StrutPartial]),
                ask(window, m_atoms[Strut]),
                ask(window, m_atoms[WmState]),
                ask(window, m_atoms[WindowType])};
    }

    /// \return false when the window is gone or not to be seen
    [[nodiscard]] bool describe(const Questions &asked, WindowInfo &info) const
    {
        const bool isShown = readPlace(asked, info);
        const QByteArray netName = answer(asked.netName);
        const QByteArray name = answer(asked.name);
        info.name = netName.isNull() ? QString::fromLatin1(name) : QString::fromUtf8(netName);
        const Cards pid = cards(answer(asked.pid));
        info.processId = pid.empty() ? 0 : pid.front();
        readClaim(asked, info);
        return readState(asked, info) && isShown;
    }

private:
    void internAtoms()
    {
        std::array<xcb_intern_atom_cookie_t, atomNames.size()> asked;
        for (size_t i = 0; i < atomNames.size(); ++i)
            asked[i] = xcb_intern_atom(m_connection, false, quint16(qstrlen(atomNames[i])), atomNames[i]);
        for (size_t i = 0; i < atomNames.size(); ++i) {
            const detail::XcbReply<xcb_intern_atom_reply_t> reply(
                xcb_intern_atom_reply(m_connection, asked[i], nullptr));
            m_atoms[i] = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
        }
    }

    [[nodiscard]] xcb_window_t root() const { return detail::screenOf(m_connection, m_screen)->root; }

    void noteArea(xcb_get_geometry_cookie_t asked)
    {
        const detail::XcbReply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(m_connection, asked, nullptr));
        m_area = reply ? QRect(0, 0, reply->width, reply->height) : QRect();
    }

    [[nodiscard]] xcb_get_property_cookie_t ask(xcb_window_t window, xcb_atom_t property) const
    {
        constexpr quint32 mostWords = 64 * 1024;
        return xcb_get_property(m_connection, false, window, property, XCB_ATOM_ANY, 0, mostWords);
    }

    /// Null when the window is gone or does not have the property.
    [[nodiscard]] QByteArray answer(xcb_get_property_cookie_t asked) const
    {
        const detail::XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, asked, nullptr));
        if (!reply || reply->type == XCB_ATOM_NONE)
            return {};
        return {static_cast<const char *>(xcb_get_property_value(reply.get())),
                xcb_get_property_value_length(reply.get())};
    }

    [[nodiscard]] bool readPlace(const Questions &asked, WindowInfo &info) const
    {
        const detail::XcbReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(m_connection, asked.attributes, nullptr));
        const detail::XcbReply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(m_connection, asked.geometry, nullptr));
        const detail::XcbReply<xcb_translate_coordinates_reply_t> origin(
            xcb_translate_coordinates_reply(m_connection, asked.origin, nullptr));
        const Cards frame = cards(answer(asked.extents)); // left, right, top, bottom
        if (!attributes || !geometry || !origin)
            return false;
        info.identifier = asked.window;
        info.bounds = QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height);
        info.isDecorated = std::any_of(frame.begin(), frame.end(), [](quint32 width) { return width > 0; });
        if (frame.size() == 4)
            info.bounds.adjust(-int(frame[0]), -int(frame[2]), int(frame[1]), int(frame[3]));
        return attributes->map_state == XCB_MAP_STATE_VIEWABLE && attributes->_class != XCB_WINDOW_CLASS_INPUT_ONLY;
    }

    /// \return false when the window is hidden
    [[nodiscard]] bool readState(const Questions &asked, WindowInfo &info) const
    {
        const Cards state = cards(answer(asked.state));
        const Cards type = cards(answer(asked.type));
        info.isFullScreen = contains(state, m_atoms[FullScreen]);
        info.isMaximized = contains(state, m_atoms[MaximizedWide]) && contains(state, m_atoms[MaximizedHigh]);
        info.isDock = contains(type, m_atoms[Dock]);
        info.isDesktop = contains(type, m_atoms[Desktop]);
        return !contains(state, m_atoms[Hidden]);
    }

    /// Panels claim strips along the edges of the whole area: so many pixels from the left, right, top and bottom.
    void readClaim(const Questions &asked, WindowInfo &info) const
    {
        const Cards partial = cards(answer(asked.strutPartial));
        const Cards plain = cards(answer(asked.strut));
        const Cards &claim = partial.size() >= 4 ? partial : plain;
        if (claim.size() >= 4 && std::any_of(claim.begin(), claim.begin() + 4, [](quint32 width) { return width > 0; }))
            info.workArea = m_area.adjusted(int(claim[0]), int(claim[2]), -int(claim[1]), -int(claim[3]));
    }

    int m_screen = 0;
    xcb_connection_t *m_connection;
    std::array<xcb_atom_t, atomNames.size()> m_atoms{};
    QRect m_area;
};

/// The connection is kept for the next question. One that broke, and one to another display, is replaced.
XServer &keptServer()
{
    static QByteArray display;
    static std::unique_ptr<XServer> kept;
    const QByteArray wanted = qgetenv("DISPLAY");
    if (!kept || !kept->isConnected() || display != wanted) {
        kept = nullptr;
        kept = std::make_unique<XServer>();
        display = wanted;
    }
    return *kept;
}

QList<WindowInfo> describeWindows(XServer &server)
{
    server.dropEvents();
    std::vector<Questions> asked;
    for (const xcb_window_t window : server.windows())
        asked.push_back(server.askAbout(window));
    ProcessNames names;
    QList<WindowInfo> windows;
    for (const Questions &questions : asked) {
        if (WindowInfo info; server.describe(questions, info)) {
            info.ownerName = names.of(info.processId);
            windows.prepend(info);
        }
    }
    return windows;
}

} // namespace

QList<WindowInfo> xWindows()
{
    for (int attempt = 0; attempt < 2; ++attempt) { // that a kept connection broke shows only when it is used
        XServer &server = keptServer();
        if (!server.isConnected())
            return {};
        QList<WindowInfo> windows = describeWindows(server);
        if (server.isConnected())
            return windows;
    }
    return {};
}

} // namespace dravelin
