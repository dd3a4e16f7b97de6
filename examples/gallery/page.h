// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets/QWidget>

class Tour;

/// One subsystem in the gallery: something to play with, and a job that the headless tour does on its own.
class Page : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    /// The page's name in the list.
    [[nodiscard]] virtual QString title() const = 0;

    /// Does the page's job on real input, and writes pictures and texts with `tour`.
    virtual void runTour(Tour &tour) = 0;
};
