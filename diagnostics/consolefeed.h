// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QBasicTimer>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtGui/QTextCharFormat>

QT_BEGIN_NAMESPACE
class QPlainTextEdit;
QT_END_NAMESPACE

namespace dravelin {

/// Brings the console's text into a view, while the view is visible: in portions from the event loop, each short enough
/// not to be felt. Scrolls along unless the reader has scrolled up.
class ConsoleFeed : public QObject
{
    Q_OBJECT

public:
    /// \param view emptied, and held weakly
    /// \param text what to show; outlives the feed
    ConsoleFeed(QPlainTextEdit *view, const QTextCharFormat &format, const QString &text);

    [[nodiscard]] QPlainTextEdit *view() const { return m_view; }

    /// The text has grown.
    void wake();
    /// The text is another one.
    void restart();

protected:
    void timerEvent(QTimerEvent *) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void insertPortion();
    [[nodiscard]] QString takePortion();
    void takePart(QString &portion);
    void skipRestOfLine();

    QPointer<QPlainTextEdit> m_view;
    QTextCharFormat m_format;
    const QString &m_text;
    qsizetype m_position = 0; ///< in m_text, up to which everything is shown
    qsizetype m_column = 0;   ///< how much of the present line is shown
    bool m_skipping = false;  ///< the present line is too long to be shown to its end
    QBasicTimer m_timer;
};

} // namespace dravelin
