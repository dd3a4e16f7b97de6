// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "screens/screenspage.h"

#include <dravelin/interface/screens.h>
#include <dravelin/platform/display.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int refreshes = 5; // a second

QString textOf(const QRectF &area)
{
    return u"%1, %2, %3 x %4"_s.arg(area.x()).arg(area.y()).arg(area.width()).arg(area.height());
}

/// From y upwards to y downwards.
QRectF downward(const QRectF &area) { return {dravelin::upwardPoint(area.bottomLeft()), area.size()}; }

/// Not every platform names its screens.
QString nameOf(const QScreen *screen)
{
    return screen->name().isEmpty() ? QString::number(dravelin::findScreenIndex(screen)) : screen->name();
}

DesktopView::Screen describe(const QScreen *screen)
{
    return {nameOf(screen), downward(dravelin::frame(screen)), downward(dravelin::visibleFrame(screen)),
            dravelin::findMouseScreen() == screen, dravelin::isFullScreen(screen)};
}

QStringList row(const QScreen *screen)
{
    return {nameOf(screen),
            textOf(dravelin::frame(screen)),
            textOf(dravelin::visibleFrame(screen)),
            QString::number(dravelin::getMenubarHeight(screen)),
            textOf(dravelin::createScreensFrameList().value(dravelin::findScreenIndex(screen))),
            dravelin::isFullScreen(screen) ? ScreensPage::tr("yes") : ScreensPage::tr("no")};
}

/// Its own bounds compare with the frames of the list, which need not be where the screens are.
QRectF place(const dravelin::WindowRecord &menubar)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    const QList<QRectF> frames = dravelin::createScreensFrameList();
    const auto holds = [&](const QRectF &frame) { return dravelin::foundMenubar(menubar, frame); };
    const auto index = std::find_if(frames.begin(), frames.end(), holds) - frames.begin();
    const QScreen *screen = screens.value(index);
    return screen ? QRectF(screen->geometry().topLeft(), menubar.bounds.size()) : QRectF();
}

/// Full screens show by their colour.
QList<DesktopView::Window> windows()
{
    QList<DesktopView::Window> windows;
    for (const dravelin::WindowRecord &record : dravelin::onScreenWindowList()) {
        if (record.ownerName == "Window Server"_L1)
            windows.append({record.name, place(record)});
        else if (record.ownerName != "Dock"_L1)
            windows.append({u"%1: %2"_s.arg(record.ownerName, record.name), record.bounds});
    }
    return windows;
}

} // namespace

ScreensPage::ScreensPage()
    : m_view(new DesktopView), m_table(new QTableWidget(0, 6)), m_state(new QLabel), m_toggle(new QPushButton)
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_view, 2);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_state);
    layout->addWidget(m_toggle, 0, Qt::AlignLeft);
    m_table->setHorizontalHeaderLabels({tr("Screen"), tr("Frame, upwards"), tr("Usable area"), tr("Menu bar"),
                                        tr("In the frame list"), tr("Full screen")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setAccessibleName(tr("Answers"));
    connect(m_toggle, &QPushButton::clicked, this, &ScreensPage::toggleFullScreen);
    connect(&m_timer, &QTimer::timeout, this, &ScreensPage::refresh);
    m_timer.setInterval(1000 / refreshes);
}

QString ScreensPage::title() const { return tr("Screens"); }

void ScreensPage::showEvent(QShowEvent *event)
{
    Page::showEvent(event);
    refresh();
    m_timer.start();
}

void ScreensPage::hideEvent(QHideEvent *event)
{
    Page::hideEvent(event);
    m_timer.stop();
}

void ScreensPage::toggleFullScreen()
{
    window()->setWindowState(window()->windowState() ^ Qt::WindowFullScreen);
    refresh();
}

void ScreensPage::refresh()
{
    DesktopView::Scene scene{{}, windows(), dravelin::DisplayService::current()->mouseLocation()};
    for (const QScreen *screen : QGuiApplication::screens())
        scene.screens << describe(screen);
    m_view->setScene(scene);
    showScreens();
    const QSizeF least = dravelin::findMinimumScreenDimensions();
    m_state->setText(tr("Every screen has at least %1 x %2. Windows seen: %3")
                         .arg(least.width())
                         .arg(least.height())
                         .arg(scene.windows.size()));
    m_toggle->setText(window()->isFullScreen() ? tr("&Leave full screen") : tr("Make this window &full screen"));
}

void ScreensPage::showScreens()
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    m_table->setRowCount(int(screens.size()));
    for (int i = 0; i < m_table->rowCount(); ++i) {
        const QStringList texts = row(screens[i]);
        for (int column = 0; column < m_table->columnCount(); ++column) {
            if (!m_table->item(i, column))
                m_table->setItem(i, column, new QTableWidgetItem);
            m_table->item(i, column)->setText(texts.value(column));
        }
    }
}

QString ScreensPage::answers() const
{
    QString text;
    for (int i = 0; i < m_table->rowCount(); ++i) {
        for (int column = 0; column < m_table->columnCount(); ++column)
            text += u"%1: %2\n"_s.arg(m_table->horizontalHeaderItem(column)->text(), m_table->item(i, column)->text());
    }
    for (const DesktopView::Window &window : m_view->scene().windows)
        text += u"%1, %2\n"_s.arg(window.title, textOf(window.bounds));
    return text + m_state->text() + u'\n';
}
