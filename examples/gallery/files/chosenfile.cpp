// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "files/chosenfile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLocale>

using namespace dravelin;

ChosenFile::ChosenFile(const QUrl &url) : m_bookmark(url), m_url(url) {}

ChosenFile::ChosenFile(const QByteArray &stored) : m_bookmark(stored), m_stored(stored) { judge(stored); }

void ChosenFile::lookAgain()
{
    const QByteArray stored = data();
    m_bookmark.stopAccess();
    m_bookmark = SecurityScopedBookmark(stored);
    judge(stored);
}

QByteArray ChosenFile::data()
{
    if (const QByteArray made = m_bookmark.getBookmarkData(); !made.isNull())
        m_stored = made;
    return m_stored;
}

void ChosenFile::judge(const QByteArray &stored)
{
    const auto contents = BookmarkService::contents(stored);
    m_before = contents ? contents->url : QUrl();
    m_url = m_bookmark.getSecurityUrl();
    if (m_url.isEmpty())
        m_state = State::Lost;
    else
        m_state = data() == stored ? State::InPlace : State::Stale;
}

void ChosenFile::toggleAccess()
{
    if (hasAccess())
        m_bookmark.stopAccess();
    else
        m_bookmark.startAccess();
}

QString ChosenFile::path()
{
    if (m_state != State::Lost)
        return m_url.toLocalFile();
    const auto contents = BookmarkService::contents(data());
    return contents ? contents->url.toLocalFile() : tr("unknown");
}

QString ChosenFile::changeText() const
{
    if (m_before == m_url)
        return tr("replaced");
    const bool isRenamed = m_before.adjusted(QUrl::RemoveFilename) == m_url.adjusted(QUrl::RemoveFilename);
    return isRenamed ? tr("renamed from %1").arg(m_before.fileName()) : tr("moved from %1").arg(m_before.toLocalFile());
}

QString ChosenFile::stateText() const
{
    switch (m_state) {
    case State::Chosen:
        return tr("just chosen");
    case State::InPlace:
        return tr("regained in its place");
    case State::Stale:
        return tr("regained, was stale: %1").arg(changeText());
    case State::Lost:
        return tr("lost");
    }
    return {};
}

QString ChosenFile::sizeText()
{
    const QFileInfo info(m_url.toLocalFile());
    return m_state != State::Lost && info.exists() ? QLocale().formattedDataSize(info.size()) : QString();
}

QString ChosenFile::accessText() const { return hasAccess() ? tr("held") : tr("none"); }
