// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// The windows of the X server, with what panels and windows that fill a screen amount to.

#include <dravelin/interface/screens.h>
#include <dravelin/platform/log.h>

#include "interface/screenareas.h"

#include <QtGui/QGuiApplication>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

/// A screen, and what has been found on it so far, from the front to the back.
struct Monitor
{
    ScreenInfo screen;
    QRectF frame; ///< of createScreensFrameList()
    QRect betweenPanels;
    bool isWanted = true;
    bool hasWindow = false; ///< of an application
    bool isFilled = false;  ///< by a full-screen window
    bool isHidden = false;  ///< by a window that takes the space between the panels
};

constexpr int rounding = 1; // of a screen's pixels, from Qt's coordinates

bool covers(const QRect &bounds, const QRect &area)
{
    return bounds.adjusted(-rounding, -rounding, rounding, rounding).contains(area);
}

bool isAtTop(const WindowInfo &panel, const QRect &screen)
{
    const QRect shown = panel.bounds & screen;
    return !shown.isEmpty() && shown.top() <= screen.top() + rounding && shown.width() > shown.height();
}

bool fills(const WindowInfo &window, const Monitor &monitor)
{
    const QRect &area = monitor.screen.pixels;
    const bool isBare = !window.isDecorated && !window.isMaximized && !monitor.hasWindow;
    return covers(window.bounds, area) && (window.isFullScreen || (isBare && covers(area, window.bounds)));
}

class Desktop
{
public:
    Desktop(const QList<ScreenInfo> &screens, const QScreen *wanted, const QList<WindowInfo> &windows)
    {
        const QList<QRectF> frames = detail::frameList(screens);
        for (qsizetype i = 0; i < screens.size(); ++i) {
            const bool isWanted = !wanted || screens[i].screen == wanted;
            if (!screens[i].pixels.isEmpty())
                m_monitors.push_back(
                    {screens[i], frames[i], detail::pixelsBetweenPanels(screens[i], windows), isWanted});
        }
    }

    /// The next window, behind those that were added before.
    void add(const WindowInfo &window)
    {
        if (window.isDock && addMenubars(window))
            return;
        addWindow(window);
        if (!window.isDock && !window.isDesktop) {
            for (Monitor &monitor : m_monitors)
                addApplication(window, monitor);
        }
    }

    [[nodiscard]] QList<WindowRecord> records() const { return m_records; }

private:
    /// \return whether the panel is a menu bar
    bool addMenubars(const WindowInfo &panel)
    {
        bool isMenubar = false;
        for (const Monitor &monitor : m_monitors) {
            if (monitor.isFilled || !isAtTop(panel, monitor.screen.pixels))
                continue;
            isMenubar = true;
            const double height = detail::fromPixels(panel.bounds & monitor.screen.pixels, monitor.screen).height();
            addRecord(monitor, u"Window Server"_s, u"Menubar"_s, QSizeF(monitor.frame.width(), height));
        }
        return isMenubar;
    }

    void addApplication(const WindowInfo &window, Monitor &monitor)
    {
        if (!window.bounds.intersects(monitor.screen.pixels))
            return;
        if (fills(window, monitor)) {
            if (!monitor.isFilled && !monitor.isHidden)
                addRecord(monitor, u"Dock"_s, u"Fullscreen Backdrop"_s, monitor.frame.size());
            monitor.isFilled = true;
        } else if (covers(window.bounds, monitor.betweenPanels)) {
            monitor.isHidden = true;
        }
        monitor.hasWindow = true;
    }

    void addRecord(const Monitor &monitor, const QString &owner, const QString &name, const QSizeF &size)
    {
        if (monitor.isWanted)
            m_records.append({owner, name, {monitor.frame.topLeft(), size}});
    }

    void addWindow(const WindowInfo &window)
    {
        const bool isMistakable = window.ownerName == "Dock"_L1 || window.ownerName == "Window Server"_L1;
        m_records.append({isMistakable ? QString() : window.ownerName, window.name,
                          detail::fromPixels(window.bounds, monitorOf(window.bounds).screen)});
    }

    /// The one that shows most of the window.
    [[nodiscard]] const Monitor &monitorOf(const QRect &bounds) const
    {
        const auto shown = [&](const Monitor &monitor) {
            const QRect part = bounds & monitor.screen.pixels;
            return qint64(part.width()) * part.height();
        };
        return *std::max_element(m_monitors.begin(), m_monitors.end(),
                                 [&](auto &a, auto &b) { return shown(a) < shown(b); });
    }

    std::vector<Monitor> m_monitors;
    QList<WindowRecord> m_records;
};

void tellThatWindowsAreUnknown()
{
    [[maybe_unused]] static const bool isTold = [] {
        logInfo(u"onScreenWindowList: the windows of other applications cannot be seen on the platform %1; no screen "
                "counts as full screen"_s.arg(QGuiApplication::platformName()));
        return true;
    }();
}

} // namespace

QList<WindowRecord> onScreenWindowList(const QScreen *screen)
{
    const std::shared_ptr<DisplayService> display = DisplayService::current();
    const QList<ScreenInfo> screens = display->screenList();
    if (std::all_of(screens.begin(), screens.end(), [](auto &info) { return info.pixels.isEmpty(); })) {
        if (!screens.isEmpty())
            tellThatWindowsAreUnknown();
        return {};
    }
    const QList<WindowInfo> windows = display->windowList();
    Desktop desktop(screens, screen, windows);
    for (const WindowInfo &window : windows)
        desktop.add(window);
    return desktop.records();
}

} // namespace dravelin
