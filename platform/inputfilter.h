// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QEvent>
#include <QtCore/QObject>

#include <memory>
#include <optional>
#include <vector>

namespace dravelin {

/// Sees every input event of the application before its receiver: knows the current one and drops the discarded ones.
class InputFilter : public QObject
{
    Q_OBJECT

public:
    explicit InputFilter(QObject *application);

    /// The application's; null when there is no QGuiApplication.
    [[nodiscard]] static InputFilter *instance();

    /// Null before the first event.
    [[nodiscard]] const QEvent *current();

    /// \param before milliseconds on the clock of the events' times; they wrap round after 32 bits
    void discard(quint64 mask, quint32 before);

    /// Milliseconds on the clock of the events that came, 0 before the first one.
    [[nodiscard]] qint64 estimatedTime() const;

    bool eventFilter(QObject *receiver, QEvent *event) override;

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Discarded
    {
        quint64 mask;
        quint32 before;
    };
    struct Handled
    {
        int loopLevel;
        std::unique_ptr<QEvent> event;
    };

    void learnClock(quint64 time);
    [[nodiscard]] bool isDiscarded(const QEvent &event);
    [[nodiscard]] bool isDiscarded(quint64 bit, quint32 time);
    void remember(const QEvent &event);
    void forgetEndedLoops();

    std::vector<Handled> m_current; ///< the last of each event loop, the outermost first
    std::vector<Discarded> m_discarded;
    quint64 m_untimedMask = 0; ///< of the events without time
    QBasicTimer m_untimed;
    int m_passesLeft = 0;
    std::optional<qint64> m_clockOffset; ///< of the events' clock to ours
};

} // namespace dravelin
