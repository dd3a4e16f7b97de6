// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"
#include "undo/canvas.h"

#include <dravelin/platform/undomanager.h>

class QLabel;
class QMenu;

/// An editor of shapes with an Edit menu that undoes and redoes everything.
class UndoPage : public Page
{
    Q_OBJECT

public:
    UndoPage();

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    class TourSteps;

    QWidget *makeMenuBar();
    void addToMenu(const QString &text, const QKeySequence &shortcut, void (UndoPage::*operation)());
    void showState();

    void add();
    void recolor();
    void remove();
    void shake();

    dravelin::UndoManager m_undo;
    Canvas *m_canvas;
    QMenu *m_menu = nullptr;
    QLabel *m_state = nullptr;
    int m_made = 0;
};
