// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"
#include "sound/loader.h"

#include <dravelin/sound/sounddepot.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFutureWatcher>
#include <QtCore/QHash>

#include <memory>

class QCheckBox;
class QDoubleSpinBox;
class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QSlider;
class SoundBoard;
class SoundPad;

/// A board with the sounds of a folder: plays, overlapping plays, categories, volume, mute, fades, and what is called
/// at their ends.
class SoundPage : public Page
{
    Q_OBJECT

public:
    SoundPage();
    ~SoundPage() override;

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    class TourSteps;

    QWidget *makeFolder();
    QWidget *makeControls();
    QWidget *makeCategories();
    QWidget *makeMute();
    QWidget *makeAll();
    QWidget *makeLog();

    void chooseFolder();
    void loadFolder(const QString &folder);
    void takeSound(const LoadedSound &loaded);
    void showLoaded();
    void addSound(const LoadedSound &loaded);

    void play(SoundPad *pad, bool overlapping);
    [[nodiscard]] bool start(qint64 soundId, bool overlapping);
    void renewDepot();
    void setCategories();
    void setVolume(int percent);
    void setMuted(bool muted);
    void fadeAll();
    void stopAll();

    void showStates();
    void showState(SoundPad *pad) const;
    void showDevice();
    void log(qint64 soundId, const QString &what);
    [[nodiscard]] QString logText() const;
    [[nodiscard]] dravelin::SoundHandler logging(const QString &what);

    std::unique_ptr<dravelin::SoundDepot> m_depot;
    QHash<qint64, QString> m_names;
    QFutureWatcher<LoadedSound> m_watcher;
    QElapsedTimer m_clock;
    qint64 m_lastId = -1;
    int m_skipped = 0;
    QString m_folder;
    SoundBoard *m_board = nullptr;
    QLabel *m_state = nullptr;
    QLabel *m_device = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_cancel = nullptr;
    QList<QCheckBox *> m_categories;
    QSlider *m_volume = nullptr;
    QCheckBox *m_mute = nullptr;
    QCheckBox *m_anyway = nullptr;
    QDoubleSpinBox *m_seconds = nullptr;
    QPlainTextEdit *m_log = nullptr;
};
