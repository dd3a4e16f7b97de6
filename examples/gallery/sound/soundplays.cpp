// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the sound page does with its sounds; how it looks is in soundpage.cpp.

#include "sound/soundpage.h"

#include "sound/categories.h"
#include "sound/soundboard.h"
#include "sound/soundpad.h"

#include <QtCore/QDir>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>

using namespace Qt::StringLiterals;
using dravelin::Sound;

void SoundPage::loadFolder(const QString &folder)
{
    m_watcher.cancel();
    m_watcher.waitForFinished();
    m_board->clear();
    renewDepot();
    m_skipped = 0;
    m_folder = folder;
    m_state->setText(tr("Loading…"));
    m_state->setToolTip(QDir::toNativeSeparators(folder));
    m_progress->show();
    m_cancel->show();
    m_watcher.setFuture(loadSounds(folder));
}

/// A depot never forgets a sound: another folder gets another depot.
void SoundPage::renewDepot()
{
    m_depot = std::make_unique<dravelin::SoundDepot>();
    m_names.clear();
    m_lastId = -1;
    setVolume(m_volume->value());
    m_depot->muteAllSounds(m_mute->isChecked(), 0);
    setCategories();
}

void SoundPage::takeSound(const LoadedSound &loaded)
{
    if (loaded.data)
        addSound(loaded);
    else
        ++m_skipped;
}

void SoundPage::showLoaded()
{
    m_progress->hide();
    m_cancel->hide();
    const QString folder = m_folder.section(u'/', -2);
    const qsizetype count = m_board->pads().size();
    QString text = count ? tr("Sounds in %1: %2").arg(folder).arg(count) : tr("No sounds in %1").arg(folder);
    if (m_skipped > 0)
        text += tr(", %1 other files skipped").arg(m_skipped);
    if (m_watcher.isCanceled())
        text += tr(", cancelled");
    else if (m_watcher.progressValue() < m_watcher.progressMaximum())
        text += tr(", the rest would not fit into memory");
    m_state->setText(text);
}

void SoundPage::addSound(const LoadedSound &loaded)
{
    const auto sound = std::make_shared<Sound>(loaded.data, ++m_lastId, categoriesOfSound(loaded.name));
    m_depot->addSound(sound);
    m_names[m_lastId] = loaded.name;
    auto *pad = new SoundPad(loaded, sound);
    connect(pad, &SoundPad::played, this, &SoundPage::play);
    showState(pad);
    m_board->add(pad);
}

void SoundPage::play(SoundPad *pad, bool overlapping)
{
    const qint64 soundId = pad->sound()->soundId();
    if (!overlapping && pad->sound()->isPlaying()) {
        pad->sound()->stop();
        log(soundId, tr("stopped"));
        return;
    }
    const bool isStarted = start(soundId, overlapping);
    log(soundId, isStarted ? tr("plays") : tr("refused"));
    if (!isStarted)
        pad->showRefusal();
    m_board->follow();
    showDevice();
}

bool SoundPage::start(qint64 soundId, bool overlapping)
{
    const dravelin::SoundHandler handler = logging(tr("play ended"));
    if (overlapping)
        return bool(m_depot->playVoice(soundId, handler));
    return m_anyway->isChecked() ? m_depot->forcePlaySound(soundId, handler) : m_depot->playSound(soundId, handler);
}

void SoundPage::setCategories()
{
    quint64 mask = 0;
    for (qsizetype i = 0; i < m_categories.size(); ++i)
        mask |= quint64(m_categories[i]->isChecked()) << i;
    m_depot->setCurrentCategory(mask);
    showStates();
}

void SoundPage::setVolume(int percent)
{
    m_depot->setVolumeForAllSound(float(percent) / 100);
    m_volume->setToolTip(tr("%1 %").arg(percent));
}

void SoundPage::setMuted(bool muted)
{
    m_depot->muteAllSounds(muted, float(m_seconds->value()),
                           logging(muted ? tr("muted, fade ended") : tr("fade ended")));
    showStates();
}

/// Sounds that do not play are called back as well; only those that do are of interest here.
void SoundPage::fadeAll()
{
    QSet<qint64> playing;
    for (const SoundPad *pad : m_board->pads()) {
        if (pad->sound()->isPlaying())
            playing << pad->sound()->soundId();
    }
    const dravelin::SoundHandler handler = logging(tr("fade ended"));
    m_depot->fadeOutAllSounds(float(m_seconds->value()), [handler, playing](Sound *sound) {
        if (playing.contains(sound->soundId()))
            handler(sound);
    });
}

void SoundPage::stopAll() { m_depot->stopAllSounds(); }

void SoundPage::showStates()
{
    for (SoundPad *pad : m_board->pads())
        showState(pad);
}

void SoundPage::showState(SoundPad *pad) const
{
    const bool isOn = (pad->sound()->category() & m_depot->currentCategory()) != 0;
    if (m_anyway->isChecked() || (isOn && !m_mute->isChecked()))
        pad->setState(SoundPad::State::Ready);
    else
        pad->setState(isOn ? SoundPad::State::Muted : SoundPad::State::Off);
}

void SoundPage::showDevice()
{
    const QString name = dravelin::SoundOutput::current()->deviceName();
    m_device->setText(name.isEmpty() ? tr("No sound device: silent") : tr("Heard on %1").arg(name));
}

void SoundPage::log(qint64 soundId, const QString &what)
{
    m_log->appendPlainText(u"%1 s  #%2 %3: %4"_s.arg(double(m_clock.elapsed()) / 1000, 0, 'f', 2)
                               .arg(soundId)
                               .arg(m_names.value(soundId), what));
}

QString SoundPage::logText() const { return m_log->toPlainText(); }

/// A sound that fades may outlive the page.
dravelin::SoundHandler SoundPage::logging(const QString &what)
{
    return [page = QPointer(this), what](Sound *sound) {
        if (page)
            page->log(sound->soundId(), what);
    };
}
