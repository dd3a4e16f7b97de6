// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/files.h>

#include <QtCore/QCoreApplication>

/// A file that the user chose, in this run of the gallery or in an earlier one, and how it was found.
class ChosenFile
{
    Q_DECLARE_TR_FUNCTIONS(ChosenFile)

public:
    enum class State { Chosen, InPlace, Stale, Lost };

    explicit ChosenFile(const QUrl &url);
    /// \param stored what data() gave in an earlier run
    explicit ChosenFile(const QByteArray &stored);

    /// Finds out where the file is now.
    void lookAgain();
    void toggleAccess();

    /// To be stored: what finds the file in a later run, or the last that did when it cannot be made anew.
    [[nodiscard]] QByteArray data();

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool hasAccess() const { return m_bookmark.hasSecurityAccess(); }
    /// Where the file was found, or else where it was last.
    [[nodiscard]] QString path();
    [[nodiscard]] QString stateText() const;
    [[nodiscard]] QString sizeText();
    [[nodiscard]] QString accessText() const;

private:
    /// What became of the bookmark that was stored.
    void judge(const QByteArray &stored);
    /// Of a file that was found again.
    [[nodiscard]] QString changeText() const;

    dravelin::SecurityScopedBookmark m_bookmark;
    QByteArray m_stored;
    QUrl m_url; ///< empty when lost; asking the bookmark for it would start access
    State m_state = State::Chosen;
    QUrl m_before; ///< where it was when it was stored
};
