// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"

#include <dravelin/imaging.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFutureWatcher>
#include <QtGui/QImage>

class InputSliders;
class QComboBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QSpinBox;
class SplitView;

/// A chain of filters over a photograph: put together from the catalogue, its inputs on sliders, before and after.
class PhotoPage : public Page
{
    Q_OBJECT

public:
    PhotoPage();
    ~PhotoPage() override;

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    class TourSteps;

    QWidget *makeChain();
    QWidget *makePictures();
    void openFile();
    void setPhoto(const QImage &photo, const QString &name);
    void add(int entry);
    void removeChosen();
    void showChain();
    void showChosen();
    void showLooks();
    /// Begins anew when something has changed meanwhile.
    void render();
    void takeResult();
    [[nodiscard]] bool isRendering() const { return m_watcher.isRunning() || m_isStale; }

    dravelin::FilterProcessor m_chain{3};
    QImage m_photo, m_second;
    QString m_name;
    QFutureWatcher<QImage> m_watcher;
    QElapsedTimer m_clock;
    bool m_isStale = false;

    QComboBox *m_catalogue;
    QSpinBox *m_level, *m_index;
    QListWidget *m_list, *m_looks;
    InputSliders *m_sliders;
    SplitView *m_split;
    QProgressBar *m_progress;
    QLabel *m_state;
};
