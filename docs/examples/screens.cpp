// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface.h>
#include <dravelin/platform/display.h>

#include <QtCore/QTextStream>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

static QTextStream out(stdout);

static void print(const char *what, const QRectF &area)
{
    out << what << ": " << area.x() << ", " << area.y() << ", " << area.width() << " x " << area.height() << '\n';
}

static void ask(const QPoint &globalPosition)
{
    //! [questions]
    QScreen *screen = dravelin::findScreenForPoint(dravelin::upwardPoint(globalPosition));
    const QRectF whole = dravelin::frame(screen);
    const QRectF usable = dravelin::visibleFrame(screen); // without panels
    const float menubar = dravelin::getMenubarHeight(screen);
    const QSizeF least = dravelin::findMinimumScreenDimensions();
    //! [questions]
    out << "screen " << dravelin::findScreenIndex(screen) << '\n';
    print("frame", whole);
    print("visible frame", usable);
    out << "menu bar " << menubar << ", at least " << least.width() << " x " << least.height() << '\n';
}

//! [stand in]
class TwoScreens : public dravelin::DisplayService
{
public:
    QList<dravelin::WindowInfo> windows;

    QList<dravelin::ScreenInfo> screenList() override
    {
        const QRect large(0, 0, 1920, 1080), small(1920, 180, 1280, 800);
        const QRect belowPanel = large.adjusted(0, 25, 0, 0);
        auto *second = reinterpret_cast<QScreen *>(this); // screens are only compared: any address does
        return {{QGuiApplication::primaryScreen(), large, belowPanel, large}, {second, small, small, small}};
    }
    QList<dravelin::WindowInfo> windowList() override { return windows; }
};
//! [stand in]

static void printFullScreen()
{
    //! [full screen]
    const QScreen *screen = dravelin::findMouseScreen();
    const bool hides = screen && dravelin::isFullScreen(screen);
    for (const dravelin::WindowRecord &window : dravelin::onScreenWindowList())
        out << window.ownerName << " - " << window.name << '\n';
    //! [full screen]
    out << (hides ? "an application fills the screen\n" : "no application fills the screen\n");
}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    //! [setting]
    const auto display = std::make_shared<TwoScreens>();
    dravelin::DisplayService::setCurrent(display);
    //! [setting]
    ask({100, 100});
    for (const QRectF &listed : dravelin::createScreensFrameList())
        print("listed", listed);

    dravelin::WindowInfo film;
    film.ownerName = "player";
    film.name = "Film";
    film.bounds = QRect(0, 0, 1920, 1080);
    film.isFullScreen = true;
    dravelin::WindowInfo panel;
    panel.ownerName = "panel";
    panel.bounds = QRect(0, 0, 1920, 25);
    panel.isDock = true;
    display->windows = {film, panel};
    printFullScreen();
    display->windows = {panel, film};
    printFullScreen();
}
