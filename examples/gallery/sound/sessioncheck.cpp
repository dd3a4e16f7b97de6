// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/sessioncheck.h"

#include "sound/levelcurve.h"
#include "tour.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// How long after a mark it is heard: what is mixed already comes first.
constexpr double delay = 0.15;
/// How much a mark's time may be off.
constexpr double blur = 0.04;

void expectLevel(Tour &tour, float level, float expected, const QString &what)
{
    tour.expect(
        std::abs(level - expected) < 0.01F * expected,
        u"%1 has level %2, computed %3"_s.arg(what).arg(double(level), 0, 'f', 4).arg(double(expected), 0, 'f', 4));
}

/// How many levels in a row from `place` on are near to `level`, after those that are not; `place` moves past them.
qsizetype restingAt(const QList<float> &levels, float level, qsizetype &place)
{
    const auto isNear = [=](float other) { return std::abs(other - level) < 0.012F; };
    const auto begin = std::find_if(levels.begin() + place, levels.end(), isNear);
    const auto end = std::find_if_not(begin, levels.end(), isNear);
    place = end - levels.begin();
    return end - begin;
}

} // namespace

SessionCheck::SessionCheck(const QString &path, QList<SoundMark> marks) : m_levels(path), m_marks(std::move(marks))
{
    for (SoundMark &mark : m_marks)
        mark.time += m_levels.clockStart();
}

void SessionCheck::run(Tour &tour) const
{
    draw(tour);
    checkVolumes(tour);
    expectSilence(tour, u"both have ended"_s, u"tone, volume 25 %"_s);
    expectSilence(tour, u"muted"_s, u"phone off: refused"_s);
    expectSilence(tour, u"phone off: refused"_s, u"played anyway"_s);
    expectSilence(tour, u"pressed again: stopped"_s, u"three at once"_s);
    tour.expect(m_levels.loudest(at(u"played anyway"_s), at(u"pressed again: stopped"_s)) > 0.05F,
                u"what was played anyway is heard"_s);
}

void SessionCheck::draw(Tour &tour) const
{
    LevelCurve curve(m_levels, m_marks);
    tour.picture(&curve, u"sound-6-levels"_s);
}

void SessionCheck::checkVolumes(Tour &tour) const
{
    const double quarter = at(u"tone, volume 25 %"_s), half = at(u"volume 50 %"_s), mute = at(u"mute, fade for 1 s"_s);
    expectLevel(tour, m_levels.median(quarter + delay, half - blur), testToneAmplitude / 4,
                u"the tone at volume 25 %"_s);
    const float full = m_levels.median(half + delay, mute - blur);
    expectLevel(tour, full, testToneAmplitude / 2, u"the tone at volume 50 %"_s);
    checkFade(tour, full);
}

/// Ten steps, each of which takes off a tenth; after the last one there is silence.
void SessionCheck::checkFade(Tour &tour, float full) const
{
    const double from = at(u"mute, fade for 1 s"_s) - blur;
    QList<float> fade = m_levels.between(from, from + 1.5);
    for (float &level : fade)
        level /= full;
    qsizetype place = 0;
    const double begin = double(restingAt(fade, 1, place)) * SoundLevels::step;
    for (int tenths = 9; tenths > 0; --tenths) {
        const double rest = double(restingAt(fade, float(tenths) / 10, place)) * SoundLevels::step;
        tour.expect(rest >= 0.02, u"the fade rests at %1 of the level for %2 s"_s.arg(tenths / 10.0).arg(rest));
    }
    const double seconds = double(place) * SoundLevels::step - begin;
    tour.expect(std::abs(seconds - 0.9) < 0.1, u"these nine steps take %1 s, computed 0.9 s"_s.arg(seconds));
}

void SessionCheck::expectSilence(Tour &tour, const QString &from, const QString &to) const
{
    const double level = double(m_levels.loudest(at(from) + delay, at(to) - blur));
    tour.expect(level < 0.001, u"silence from \"%1\" to \"%2\": level %3"_s.arg(from, to).arg(level, 0, 'f', 5));
}

double SessionCheck::at(const QString &text) const
{
    const auto found =
        std::find_if(m_marks.begin(), m_marks.end(), [&](const SoundMark &mark) { return mark.text == text; });
    return found == m_marks.end() ? 0 : found->time;
}
