// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"

#include <dravelin/interface/stackview.h>

class Block;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QScrollArea;
class QSlider;

/// A stack view from an interface file, whose properties and children can be changed. Here every change arranges it.
class StackPage : public Page
{
    Q_OBJECT

public:
    StackPage();

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    class TourSteps;

    QWidget *makeControls();
    void makePropertyControls(QBoxLayout *layout);
    void makeChildControls(QBoxLayout *layout);
    QDoubleSpinBox *makeSizeField();

    /// Reads the interface file anew; the controls show what it says.
    void load();
    void showProperties();
    void addBlock();
    void follow(Block *block);
    void removeBlock();
    void select(Block *block);
    void resizeSelected();

    void arrange();
    void showFrames();
    [[nodiscard]] QString framesText() const;

    QScrollArea *m_scroll;
    QWidget *m_ground = nullptr; ///< what the interface file describes
    dravelin::VerticalStackView *m_column = nullptr;
    QPointer<Block> m_selected;
    QComboBox *m_alignment = nullptr;
    QDoubleSpinBox *m_spacing = nullptr;
    QCheckBox *m_sizeToFit = nullptr;
    QSlider *m_height = nullptr;
    QDoubleSpinBox *m_childWidth = nullptr;
    QDoubleSpinBox *m_childHeight = nullptr;
    QLabel *m_frames = nullptr;
};
