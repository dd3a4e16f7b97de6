// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the sound page does on its own: plays through a recorded session with the mouse and the controls, then reads the
// recording and finds in it the volumes, the steps of a fade, and silence where sounds were muted or refused.

#include "tour.h"

#include "sound/recording.h"
#include "sound/sessioncheck.h"
#include "sound/soundboard.h"
#include "sound/soundpad.h"
#include "sound/soundpage.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;
using dravelin::SoundOutput;

class SoundPage::TourSteps
{
public:
    TourSteps(SoundPage &page, Tour &tour) : m_page(page), m_tour(tour) {}

    void run()
    {
        waitForLoading();
        m_tour.expect(!m_page.m_board->pads().isEmpty(), m_page.m_state->text());
        m_page.addSound(loadedSound(u"test-tone"_s, testTone(4)));
        if (!m_tour.expect(pad(u"phone-incoming-call"_s) && pad(u"complete"_s) && pad(u"dialog-error"_s),
                           u"the sounds that the session needs are there"_s))
            return;
        picture(u"1-board"_s);
        record();
        countCalls();
        SessionCheck(recordingPath(m_tour.folder()), m_marks).run(m_tour);
        otherFolder();
        cancelLoading();
    }

private:
    void record()
    {
        SoundOutput::setCurrent(SoundOutput::createSystemOutput());
        m_page.m_log->clear();
        m_page.m_clock.restart();
        m_clock = std::make_unique<SoundClock>();
        pass(0.3);
        together();
        volumeAndMute();
        category();
        voices();
        fadeAll();
        m_clock.reset();
        SoundOutput::setCurrent(nullptr); // closes the recording
        m_tour.file(u"sound-session.wav"_s);
        m_tour.text(u"sound-calls"_s, m_page.logText() + u'\n');
    }

    void together()
    {
        mark(u"two sounds"_s);
        press(u"phone-incoming-call"_s);
        press(u"complete"_s);
        pass(0.4);
        m_tour.expect(m_page.m_device->text().startsWith(u"Heard on"_s), m_page.m_device->text());
        picture(u"2-playing"_s);
        waitForCalls(u"phone-incoming-call: play ended"_s, 1);
        waitForCalls(u"complete: play ended"_s, 1);
        mark(u"both have ended"_s);
        pass(0.2);
    }

    void volumeAndMute()
    {
        mark(u"tone, volume 25 %"_s);
        press(u"test-tone"_s);
        pass(0.6);
        mark(u"volume 50 %"_s);
        m_page.m_volume->setValue(50);
        pass(0.6);
        mark(u"mute, fade for 1 s"_s);
        m_page.m_mute->setChecked(true);
        waitForCalls(u"test-tone: muted, fade ended"_s, 1);
        mark(u"muted"_s);
        press(u"complete"_s);
        picture(u"3-muted"_s);
        pass(0.3);
        m_tour.expect(calls(u"complete: refused"_s) == 1, u"a muted sound refuses to play"_s);
        m_page.m_mute->setChecked(false);
    }

    void category()
    {
        m_page.m_categories.at(1)->setChecked(false);
        mark(u"phone off: refused"_s);
        press(u"phone-incoming-call"_s);
        m_tour.expect(calls(u"phone-incoming-call: refused"_s) == 1, u"a category that is off refuses to play"_s);
        picture(u"4-category-off"_s);
        pass(0.3);
        mark(u"played anyway"_s);
        m_page.m_anyway->setChecked(true);
        press(u"phone-incoming-call"_s);
        pass(0.5);
        mark(u"pressed again: stopped"_s);
        press(u"phone-incoming-call"_s);
        m_page.m_anyway->setChecked(false);
        m_page.m_categories.at(1)->setChecked(true);
        pass(0.3);
    }

    void voices()
    {
        mark(u"three at once"_s);
        SoundPad *error = pad(u"dialog-error"_s);
        type(m_page.m_board->pads().at(m_page.m_board->pads().indexOf(error) - 1), Qt::Key_Right);
        m_tour.expect(m_page.window()->focusWidget() == error, u"an arrow key walks to the next sound"_s);
        type(error, Qt::Key_Return);
        pass(0.12);
        press(u"dialog-error"_s, Qt::ShiftModifier);
        pass(0.12);
        press(u"dialog-error"_s, Qt::ShiftModifier);
        m_tour.expect(error->sound()->voices().size() == 2, u"two voices overlap the sound"_s);
        pass(0.05);
        picture(u"5-voices"_s);
        waitForCalls(u"dialog-error: play ended"_s, 3);
        pass(0.2);
    }

    void fadeAll()
    {
        mark(u"two sounds"_s);
        press(u"service-logout"_s);
        press(u"complete"_s);
        pass(0.4);
        mark(u"fade all for 0.5 s"_s);
        m_page.m_seconds->setValue(0.5);
        m_page.fadeAll();
        waitForCalls(u"service-logout: fade ended"_s, 1);
        waitForCalls(u"complete: fade ended"_s, 1);
        mark(u"faded"_s);
        pass(0.3);
        m_page.m_seconds->setValue(1);
    }

    void countCalls()
    {
        m_tour.expect(calls(u": play ended"_s) == 5, u"every play that came to its end was called back once"_s);
        m_tour.expect(calls(u"fade ended"_s) == 3, u"every fade was called back once"_s);
    }

    void waitForLoading()
    {
        m_tour.waitFor([this] { return m_page.m_cancel->isHidden(); }, u"a folder is loaded"_s);
    }

    /// The recording itself, among files that are no sounds.
    void otherFolder()
    {
        QDir folder(m_tour.folder().filePath(u"sounds"_s));
        folder.removeRecursively();
        m_tour.folder().mkpath(u"sounds"_s);
        QFile(folder.filePath(u"empty.ogg"_s)).open(QIODevice::WriteOnly);
        QFile::copy(m_tour.folder().filePath(u"sound-1-board.png"_s), folder.filePath(u"picture.wav"_s));
        QFile::copy(recordingPath(m_tour.folder()), folder.filePath(u"session.wav"_s));
        m_page.loadFolder(folder.path());
        waitForLoading();
        m_tour.expect(m_page.m_board->pads().size() == 1 && m_page.m_skipped == 2, m_page.m_state->text());
    }

    void cancelLoading()
    {
        m_page.loadFolder(systemSoundFolder());
        m_page.m_cancel->click();
        waitForLoading();
        m_tour.expect(m_page.m_watcher.isCanceled() && m_page.m_board->pads().size() < 30, m_page.m_state->text());
    }

    [[nodiscard]] SoundPad *pad(const QString &name) const
    {
        const QList<SoundPad *> &pads = m_page.m_board->pads();
        const auto found = std::find_if(pads.begin(), pads.end(), [&](SoundPad *pad) { return pad->name() == name; });
        return found == pads.end() ? nullptr : *found;
    }

    void press(const QString &name, Qt::KeyboardModifiers modifiers = {})
    {
        SoundPad *target = pad(name);
        const QPointF place = target->rect().center();
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, place, target->mapToGlobal(place), Qt::LeftButton, Qt::LeftButton, modifiers);
            QCoreApplication::sendEvent(target, &event);
        }
    }

    void type(QWidget *target, int key)
    {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, {});
            QCoreApplication::sendEvent(target, &event);
        }
    }

    [[nodiscard]] qsizetype calls(const QString &text) const { return m_page.logText().count(text); }

    void waitForCalls(const QString &text, qsizetype count)
    {
        m_tour.waitFor([&] { return calls(text) >= count; }, u"%1 × %2"_s.arg(count).arg(text));
    }

    /// Lets the session go on.
    void pass(double seconds)
    {
        const double end = m_clock->now() + seconds;
        m_tour.waitFor([&] { return m_clock->now() >= end; }, u"%1 s of the session pass"_s.arg(seconds));
    }

    void mark(const QString &text) { m_marks << SoundMark{m_clock->now(), text}; }

    void picture(const QString &name) { m_tour.picture(m_page.window(), u"sound-"_s + name); }

    SoundPage &m_page;
    Tour &m_tour;
    std::unique_ptr<SoundClock> m_clock;
    QList<SoundMark> m_marks;
};

void SoundPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
