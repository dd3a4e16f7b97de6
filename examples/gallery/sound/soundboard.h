// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QList>
#include <QtWidgets/QWidget>

class SoundPad;

/// Pads in rows. Tab comes to one of them, the arrow keys walk through them. Their positions move while something plays.
class SoundBoard : public QWidget
{
    Q_OBJECT

public:
    /// \param tabBefore from which Tab goes on to the pads
    explicit SoundBoard(QWidget *tabBefore);

    [[nodiscard]] const QList<SoundPad *> &pads() const { return m_pads; }
    /// \param pad becomes the board's
    void add(SoundPad *pad);
    void clear();

    /// Moves the positions from now on, until nothing plays any more.
    void follow();

Q_SIGNALS:
    /// An arrow key brought the focus there.
    void walkedTo(QWidget *pad);
    /// Nothing plays any more.
    void fellSilent();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    [[nodiscard]] int columns() const;
    void arrange();
    /// From now on, Tab comes to this one.
    void makeTabStop(SoundPad *pad);
    void walk(SoundPad *from, int key);

    QList<SoundPad *> m_pads;
    QWidget *m_tabBefore;
    SoundPad *m_tabStop = nullptr;
    QBasicTimer m_timer;
};
