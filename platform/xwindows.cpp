// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xwindows.h"

#include "platform/xwindowlist.h"

#include <memory>

namespace dravelin {

namespace {

/// The windows as they were listed last, and whether they still are so.
class KnownWindows
{
public:
    [[nodiscard]] bool isOpen() const { return m_server.isOpen(); }
    [[nodiscard]] QByteArray display() const { return m_display; }

    QList<WindowInfo> list()
    {
        if (!m_watch.sawNoChange())
            m_windows = listXWindows(m_server, XWindowWatch::isPossible() ? &m_watch : nullptr);
        return m_windows;
    }

private:
    QByteArray m_display = qgetenv("DISPLAY");
    XConnection m_server;
    XWindowWatch m_watch{m_server};
    QList<WindowInfo> m_windows;
};

/// The connection is kept for the next question. One that broke, and one to another display, is replaced.
KnownWindows &knownWindows()
{
    static std::unique_ptr<KnownWindows> known;
    if (!known || !known->isOpen() || known->display() != qgetenv("DISPLAY")) {
        known = nullptr;
        known = std::make_unique<KnownWindows>();
    }
    return *known;
}

} // namespace

QList<WindowInfo> xWindows()
{
    for (int attempt = 0; attempt < 2; ++attempt) { // that a kept connection broke shows only when it is used
        KnownWindows &known = knownWindows();
        if (!known.isOpen())
            return {};
        QList<WindowInfo> windows = known.list();
        if (known.isOpen())
            return windows;
    }
    return {};
}

} // namespace dravelin
