// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"
#include "screens/desktopview.h"

#include <QtCore/QTimer>

class QLabel;
class QPushButton;
class QTableWidget;

/// The screens, windows and pointer of the desktop, and the answers about them, while the page is shown.
class ScreensPage : public Page
{
    Q_OBJECT

public:
    ScreensPage();

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    class TourSteps;

    void toggleFullScreen();
    void refresh();
    void showScreens();
    [[nodiscard]] QString answers() const;

    QTimer m_timer;
    DesktopView *m_view;
    QTableWidget *m_table;
    QLabel *m_state;
    QPushButton *m_toggle;
};
