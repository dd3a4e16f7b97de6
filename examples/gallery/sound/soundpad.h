// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "sound/loader.h"

#include <dravelin/sound/sound.h>

#include <QtCore/QTimer>
#include <QtWidgets/QAbstractButton>

/// A sound to press: its name, its length, its waveform and where it plays.
///
/// A click, space and enter press it; with Shift they ask for one more play beside those that go on.
class SoundPad : public QAbstractButton
{
    Q_OBJECT

public:
    enum class State { Ready, Off, Muted };

    SoundPad(const LoadedSound &loaded, std::shared_ptr<dravelin::Sound> sound);

    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] const std::shared_ptr<dravelin::Sound> &sound() const { return m_sound; }

    /// Whether its sound would play now.
    [[nodiscard]] State state() const { return m_state; }
    void setState(State state);

    /// Shows for a second that a press was refused.
    void showRefusal();

    /// Moves the positions to where the plays are now.
    /// \return whether anything plays
    bool follow();

Q_SIGNALS:
    void played(SoundPad *pad, bool overlapping);
    void entered(SoundPad *pad);
    /// An arrow key asks for the pad in that direction.
    void leaving(SoundPad *pad, int key);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    [[nodiscard]] QColor color() const;
    /// The texts' colour, mixed with the pad's ground.
    [[nodiscard]] QColor softText() const;
    [[nodiscard]] QString remark() const;
    void describe();
    [[nodiscard]] QList<double> positions() const;
    void paintGround(QPainter &painter) const;
    void paintTexts(QPainter &painter) const;
    void paintWave(QPainter &painter) const;

    QString m_name;
    QList<float> m_peaks;
    std::shared_ptr<dravelin::Sound> m_sound;
    /// The parts that were played, 0 to 1, of all plays that go on.
    QList<double> m_positions;
    State m_state = State::Ready;
    QTimer m_refusal;
    bool m_isShifted = false;
};
