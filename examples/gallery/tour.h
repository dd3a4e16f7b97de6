// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

class QWidget;

/// The headless run through all pages: it takes pictures and texts into a folder and keeps account of what was done.
class Tour
{
public:
    explicit Tour(const QDir &folder);

    [[nodiscard]] QDir folder() const { return m_folder; }

    /// Something that was done, for the summary.
    void did(const QString &what);

    /// Something that must hold; if not, the tour fails.
    bool expect(bool holds, const QString &what);

    /// Waits until the condition holds, while events are handled; fails the tour after 20 seconds.
    bool waitFor(const std::function<bool()> &condition, const QString &what);

    void picture(QWidget *widget, const QString &name);
    void text(const QString &name, const QString &content);
    /// Counts a file that is in the folder already; fails the tour when it is not.
    void file(const QString &name);

    /// Prints what was done and written.
    /// \return the exit code: 0 when all expectations held
    int summarise() const;

private:
    QDir m_folder;
    QStringList m_done;
    QStringList m_failed;
    QStringList m_files;
};
