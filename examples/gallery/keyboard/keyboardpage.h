// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"

#include <dravelin/platform/event.h>

#include <QtCore/QBasicTimer>

class KeyboardView;
class MouseView;
class QLabel;
class QPushButton;

/// What is held right now, what the last event said, and queued events thrown away.
class KeyboardPage : public Page
{
    Q_OBJECT

public:
    KeyboardPage();

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    class TourSteps;

    QWidget *makeButtons();
    QPushButton *makeBlockButton(const QString &text, void (*discard)());
    void showNow();
    void decode(const dravelin::Event &event);
    void showCounts();
    /// Holds the event loop up, as a long job would, and then throws away what was typed and clicked meanwhile.
    void block(void (*discard)());

    KeyboardView *m_keyboard;
    MouseView *m_mouse;
    QLabel *m_now;
    QLabel *m_last;
    QLabel *m_counts;
    QBasicTimer m_poll;
    int m_keys = 0;
    int m_presses = 0;
    int m_blockSeconds = 2;
};
