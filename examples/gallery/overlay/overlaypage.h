// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "overlay/iconview.h"
#include "page.h"

#include <dravelin/imaging.h>

#include <vector>

class QCheckBox;
class QLabel;
class QSlider;

/// Icons that are tinted, darkened, put on a background and scaled.
class OverlayPage : public Page
{
    Q_OBJECT

public:
    OverlayPage();

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    class TourSteps;

    QWidget *makeControls();
    QSlider *makeSlider(const QString &name, int value);
    void openFile();

    void makeOverlays();
    void tint();
    void showResults();

    QList<dravelin::Image> m_icons;
    std::vector<dravelin::ImageOverlay> m_overlays;
    IconView *m_originals;
    IconView *m_results;
    IconView *m_small;
    QCheckBox *m_grey = nullptr;
    QCheckBox *m_background = nullptr;
    QSlider *m_hue = nullptr;
    QSlider *m_saturation = nullptr;
    QSlider *m_level = nullptr;
    QLabel *m_state = nullptr;
};
