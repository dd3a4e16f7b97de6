// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the sound page does on its own: plays through a recorded session with the mouse and the controls, then reads the
// recording and finds in it the volumes, the steps of a fade, and silence where sounds were muted or refused.

#include "tour.h"

#include "sound/levelcurve.h"
#include "sound/recording.h"
#include "sound/soundboard.h"
#include "sound/soundpad.h"
#include "sound/soundpage.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QSlider>

#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;
using dravelin::SoundData;
using dravelin::SoundOutput;

namespace {

constexpr float toneAmplitude = 0.8F;

/// A sine whose period is a fifth of a level's step, so that a steady tone has a steady level.
std::shared_ptr<const SoundData> tone(double seconds)
{
    constexpr int rate = 44100;
    constexpr double frequency = 5 / SoundLevels::step;
    std::vector<qint16> samples(std::size_t(seconds * rate));
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = qint16(
            std::lround(double(toneAmplitude) * 32767 * std::sin(2 * std::numbers::pi * frequency * double(i) / rate)));
    return SoundData::fromSamples(std::move(samples), 1, rate);
}

} // namespace

class SoundPage::TourSteps
{
public:
    TourSteps(SoundPage &page, Tour &tour) : m_page(page), m_tour(tour) {}

    void run()
    {
        m_tour.waitFor([this] { return m_page.m_watcher.isFinished() && !m_page.m_board->pads().isEmpty(); },
                       u"the board has the system's sounds"_s);
        m_page.addSound(loadedSound(u"test-tone"_s, tone(4)));
        if (!m_tour.expect(pad(u"phone-incoming-call"_s) && pad(u"complete"_s) && pad(u"dialog-error"_s),
                           u"the sounds that the session needs are there"_s))
            return;
        picture(u"1-board"_s);
        record();
        judge(SoundLevels(m_tour.folder().filePath(u"sound-session.wav"_s)));
    }

private:
    void record()
    {
        SoundOutput::setCurrent(SoundOutput::createSystemOutput());
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
        mark(u"fade ended"_s);
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
        press(u"dialog-error"_s);
        pass(0.12);
        press(u"dialog-error"_s, Qt::ShiftModifier);
        pass(0.12);
        press(u"dialog-error"_s, Qt::ShiftModifier);
        m_tour.expect(pad(u"dialog-error"_s)->sound()->voices().size() == 2, u"two voices overlap the sound"_s);
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

    void judge(const SoundLevels &levels)
    {
        for (SoundMark &mark : m_marks)
            mark.time += levels.clockStart();
        LevelCurve curve(levels, m_marks);
        m_tour.picture(&curve, u"sound-6-levels"_s);
        // A level is taken a little after the mark: what is mixed already is heard first.
        const double tone = at(u"tone, volume 25 %"_s), louder = at(u"volume 50 %"_s);
        expectLevel(levels.median(tone + 0.2, louder - 0.05), toneAmplitude / 4, u"the tone at volume 25 %"_s);
        const float full = levels.median(louder + 0.2, at(u"mute, fade for 1 s"_s) - 0.05);
        expectLevel(full, toneAmplitude / 2, u"the tone at volume 50 %"_s);
        judgeFade(levels, full);
        expectSilence(levels, u"both have ended"_s, u"tone, volume 25 %"_s);
        expectSilence(levels, u"fade ended"_s, u"phone off: refused"_s);
        expectSilence(levels, u"phone off: refused"_s, u"played anyway"_s);
        expectSilence(levels, u"pressed again: stopped"_s, u"three at once"_s);
        m_tour.expect(levels.loudest(at(u"played anyway"_s), at(u"pressed again: stopped"_s)) > 0.05F,
                      u"what was played anyway is heard"_s);
        countCalls();
    }

    /// Ten steps of a tenth each, of which the last one is silence.
    void judgeFade(const SoundLevels &levels, float full)
    {
        const double from = at(u"mute, fade for 1 s"_s);
        const QList<float> fade = levels.between(from, from + 1.5);
        qsizetype place = 0, first = -1;
        for (int tenths = 9; tenths > 0; --tenths) {
            const auto isThere = [&](qsizetype i) { return std::abs(fade[i] / full - float(tenths) / 10) < 0.012F; };
            qsizetype length = 0;
            while (place < fade.size() && !isThere(place))
                ++place;
            if (first < 0)
                first = place;
            while (place < fade.size() && isThere(place++))
                ++length;
            m_tour.expect(length >= 2, u"the fade rests at %1 of the level for %2 s"_s.arg(tenths / 10.0)
                                           .arg(double(length) * SoundLevels::step, 0, 'f', 2));
        }
        const double seconds = double(place - first) * SoundLevels::step;
        m_tour.expect(seconds > 0.75 && seconds < 1.1, u"these nine steps take %1 s"_s.arg(seconds, 0, 'f', 2));
    }

    void countCalls()
    {
        m_tour.expect(calls(u": play ended"_s) == 5, u"every play that came to its end was called back once"_s);
        m_tour.expect(calls(u"fade ended"_s) == 3, u"every fade was called back once"_s);
    }

    void expectLevel(float level, float expected, const QString &what)
    {
        m_tour.expect(
            std::abs(level - expected) < 0.01F * expected,
            u"%1 has level %2, computed %3"_s.arg(what).arg(double(level), 0, 'f', 4).arg(double(expected), 0, 'f', 4));
    }

    void expectSilence(const SoundLevels &levels, const QString &from, const QString &to)
    {
        const double level = double(levels.loudest(at(from) + 0.15, at(to)));
        m_tour.expect(level < 0.001, u"silence from \"%1\" to \"%2\": level %3"_s.arg(from, to).arg(level, 0, 'f', 5));
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

    [[nodiscard]] double at(const QString &text) const
    {
        const auto found =
            std::find_if(m_marks.begin(), m_marks.end(), [&](const SoundMark &mark) { return mark.text == text; });
        return found == m_marks.end() ? 0 : found->time;
    }

    void picture(const QString &name) { m_tour.picture(m_page.window(), u"sound-"_s + name); }

    SoundPage &m_page;
    Tour &m_tour;
    std::unique_ptr<SoundClock> m_clock;
    QList<SoundMark> m_marks;
};

void SoundPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
