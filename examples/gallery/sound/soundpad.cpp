// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/soundpad.h"

#include "sound/categories.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;
using dravelin::Sound;

namespace {

constexpr int margin = 7;
constexpr int headHeight = 20;

const QColor refused(220, 60, 60);

/// \param share of the second colour, 0 to 1
QColor mixed(const QColor &first, const QColor &second, float share)
{
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                            mix(first.blueF(), second.blueF()));
}

bool isArrow(int key) { return key >= Qt::Key_Left && key <= Qt::Key_Down; }

void appendPosition(QList<double> &positions, const Sound &sound)
{
    if (sound.isPlaying() && sound.duration() > 0)
        positions << std::clamp(sound.currentTime() / sound.duration(), 0.0, 1.0);
}

} // namespace

SoundPad::SoundPad(const LoadedSound &loaded, std::shared_ptr<Sound> sound)
    : m_name(loaded.name), m_peaks(loaded.peaks), m_sound(std::move(sound))
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setToolTip(
        tr("%1\nA click plays or stops it, a click with Shift plays it once more at the same time.").arg(m_name));
    setAccessibleName(tr("%1, %2 seconds").arg(m_name).arg(m_sound->duration(), 0, 'f', 1));
    m_refusal.setSingleShot(true);
    m_refusal.setInterval(1000);
    connect(&m_refusal, &QTimer::timeout, this, [this] { update(); });
    connect(m_sound.get(), &Sound::playingChanged, this, &SoundPad::describe);
    connect(this, &QAbstractButton::clicked, this, [this] { Q_EMIT played(this, m_isShifted); });
    describe();
}

void SoundPad::setState(State state)
{
    if (std::exchange(m_state, state) != state)
        describe();
}

void SoundPad::showRefusal()
{
    m_refusal.start();
    update();
}

QList<double> SoundPad::positions() const
{
    QList<double> result;
    appendPosition(result, *m_sound);
    const QList<std::shared_ptr<Sound>> voices = m_sound->voices();
    for (const auto &voice : voices)
        appendPosition(result, *voice);
    return result;
}

bool SoundPad::follow()
{
    const QList<double> now = positions();
    if (std::exchange(m_positions, now) != now)
        update();
    return !now.isEmpty();
}

void SoundPad::keyPressEvent(QKeyEvent *event)
{
    m_isShifted = event->modifiers().testFlag(Qt::ShiftModifier);
    if (isArrow(event->key()))
        Q_EMIT leaving(this, event->key());
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void SoundPad::mousePressEvent(QMouseEvent *event)
{
    m_isShifted = event->modifiers().testFlag(Qt::ShiftModifier);
    QAbstractButton::mousePressEvent(event);
}

void SoundPad::focusInEvent(QFocusEvent *event)
{
    QAbstractButton::focusInEvent(event);
    Q_EMIT entered(this);
}

QColor SoundPad::softText() const
{
    return mixed(palette().color(QPalette::Text), palette().color(QPalette::Base), 0.45F);
}

QColor SoundPad::color() const
{
    const QColor color = colorOfSound(m_sound->category());
    return m_state == State::Ready ? color : QColor::fromHsv(color.hue(), 25, color.value());
}

QString SoundPad::remark() const
{
    if (m_refusal.isActive())
        return tr("refused");
    if (m_state == State::Off)
        return tr("off");
    return m_state == State::Muted ? tr("muted") : tr("%1 s").arg(m_sound->duration(), 0, 'f', 1);
}

void SoundPad::describe()
{
    setAccessibleDescription(m_sound->isPlaying() ? tr("playing") : remark());
    update();
}

void SoundPad::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintGround(painter);
    if (m_state != State::Ready && m_positions.isEmpty() && !m_refusal.isActive())
        painter.setOpacity(0.5);
    paintTexts(painter);
    paintWave(painter);
}

void SoundPad::paintGround(QPainter &painter) const
{
    const bool playing = !m_positions.isEmpty();
    QColor ground = palette().color(QPalette::Base);
    if (playing)
        ground = mixed(ground, color(), 0.25F);
    else if (isDown() || underMouse())
        ground = palette().color(QPalette::AlternateBase);
    QPen pen(playing ? color() : palette().color(QPalette::Mid), playing ? 2 : 1);
    if (m_refusal.isActive())
        pen = QPen(refused, 2);
    painter.setPen(pen);
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 6, 6);
    if (hasFocus()) {
        painter.setPen(QPen(palette().highlight(), 1.5, Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(4, 4, -4, -4), 4, 4);
    }
}

void SoundPad::paintTexts(QPainter &painter) const
{
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    painter.setFont(small);
    const QRect head(margin + 2, 4, width() - 2 * margin - 4, headHeight);
    const QFontMetrics metrics(small);
    painter.setPen(m_refusal.isActive() ? refused : softText());
    painter.drawText(head, Qt::AlignRight | Qt::AlignVCenter, remark());
    const int space = head.width() - metrics.horizontalAdvance(remark()) - 6;
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, metrics.elidedText(m_name, Qt::ElideMiddle, space));
}

/// The root of the amplitude is nearer to what is heard, and keeps soft sounds visible.
void SoundPad::paintWave(QPainter &painter) const
{
    const QRectF area(margin + 2, headHeight + 6, width() - 2 * margin - 4, height() - headHeight - margin - 6);
    const double furthest = m_positions.isEmpty() ? 0 : *std::max_element(m_positions.begin(), m_positions.end());
    const double step = area.width() / double(std::max<qsizetype>(m_peaks.size(), 1));
    painter.setPen(Qt::NoPen);
    for (qsizetype i = 0; i < m_peaks.size(); ++i) {
        const bool isPlayed = double(i) < furthest * double(m_peaks.size());
        const double bar = std::max(1.0, area.height() * std::sqrt(double(m_peaks[i])));
        painter.setBrush(isPlayed ? mixed(color(), palette().color(QPalette::Text), 0.35F) : color());
        painter.drawRect(QRectF(area.left() + double(i) * step, area.center().y() - bar / 2, step * 0.75, bar));
    }
    painter.setPen(QPen(palette().color(QPalette::Text), 1.5));
    for (const double position : m_positions)
        painter.drawLine(QPointF(area.left() + position * area.width(), area.top() - 2),
                         QPointF(area.left() + position * area.width(), area.bottom() + 2));
}
