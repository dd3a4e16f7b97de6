// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What it costs to ask whether an application fills the screen, with so many windows on a real X server, which the program
// starts: again and again, and after a window was renamed each time. The last window is in front, and as large as the screen.
// All are of one process, and have no title. Everything is asked within an event loop, as applications do.

#include <dravelin/interface/screens.h>
#include <dravelin/platform/display.h>

#include <QtCore/QEventLoop>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include <benchmark/benchmark.h>
#include <xcb/xcb.h>

#include <cstdlib>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

constexpr QRect area(0, 0, 1920, 1080);

/// The benchmarks run without a screen on the X server.
class OneScreen : public DisplayService
{
public:
    QList<ScreenInfo> screenList() override { return {{QGuiApplication::primaryScreen(), area, area, area}}; }
};

/// An X server with windows.
class Windows
{
public:
    explicit Windows(int count)
    {
        m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1920x1080x24"_s, u"-noreset"_s});
        while (!m_server.canReadLine() && m_server.waitForReadyRead(30'000)) {
        }
        qputenv("DISPLAY", ':' + m_server.readLine().trimmed());
        m_connection = xcb_connect(nullptr, nullptr);
        internPid();
        for (int i = 0; i < count && isOpen(); ++i)
            addWindow(i + 1 < count ? QSize(300, 200) : area.size());
    }
    ~Windows()
    {
        xcb_disconnect(m_connection);
        m_server.kill();
        m_server.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Windows)

    [[nodiscard]] bool isOpen() const { return xcb_connection_has_error(m_connection) == 0; }

    /// Renames the window in front, and waits for it.
    void change()
    {
        constexpr char title[] = "title";
        wait(xcb_change_property_checked(m_connection, XCB_PROP_MODE_REPLACE, m_front, XCB_ATOM_WM_NAME,
                                         XCB_ATOM_STRING, 8, sizeof title - 1, title));
    }

private:
    void wait(xcb_void_cookie_t request) { std::free(xcb_request_check(m_connection, request)); }

    void addWindow(QSize size)
    {
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        const xcb_window_t window = xcb_generate_id(m_connection);
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, quint16(size.width()),
                          quint16(size.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
        const auto process = quint32(QCoreApplication::applicationPid());
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, m_pid, XCB_ATOM_CARDINAL, 32, 1, &process);
        wait(xcb_map_window_checked(m_connection, window));
        m_front = window;
    }

    void internPid()
    {
        xcb_intern_atom_reply_t *reply =
            xcb_intern_atom_reply(m_connection, xcb_intern_atom(m_connection, false, 11, "_NET_WM_PID"), nullptr);
        m_pid = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
        std::free(reply);
    }

    QProcess m_server;
    xcb_connection_t *m_connection = nullptr;
    xcb_atom_t m_pid = XCB_ATOM_NONE;
    xcb_window_t m_front = XCB_WINDOW_NONE;
};

void askWithin(benchmark::State &state, bool isChanging)
{
    Windows windows(int(state.range(0)));
    const auto before = DisplayService::setCurrent(std::make_shared<OneScreen>());
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!windows.isOpen() || !isFullScreen(screen))
        state.SkipWithError("there is no X server with a window that fills the screen");
    for (auto _ : state) {
        if (isChanging) {
            state.PauseTiming();
            windows.change();
            state.ResumeTiming();
        }
        benchmark::DoNotOptimize(isFullScreen(screen));
    }
    DisplayService::setCurrent(before);
}

void askInEventLoop(benchmark::State &state, bool isChanging)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        askWithin(state, isChanging);
        loop.quit();
    });
    loop.exec();
}

[[maybe_unused]] const auto *again = benchmark::RegisterBenchmark("screens/isFullScreen/ours", askInEventLoop, false)
                                         -> Arg(1) -> Arg(10) -> Arg(100) -> UseRealTime()
                                             -> Unit(benchmark::kMicrosecond);
[[maybe_unused]] const auto *afterChange =
    benchmark::RegisterBenchmark("screens/isFullScreen_after_change/ours", askInEventLoop, true) -> Arg(1) -> Arg(10)
        -> Arg(100) -> UseRealTime() -> Unit(benchmark::kMicrosecond);

} // namespace
