// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/bookmarks.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <memory>

namespace dravelin {

/// A file that the user chose, kept over the application's starts: its URL, the bookmark that finds it again after it
/// was renamed or replaced, and the access to it, which ends with the object at the latest.
///
///     dravelin::SecurityScopedBookmark chosen(dialogUrl);
///     settings.save(chosen.getBookmarkData());
///
///     dravelin::SecurityScopedBookmark again(settings.load());    // next start, the file renamed meanwhile
///     if (const QUrl url = again.getSecurityUrl(); !url.isEmpty() && open(url))
///         settings.save(again.getBookmarkData());                 // renewed if it was stale
///
/// Works through the BookmarkService that is in use when it is made. Problems are log lines that begin with "SSBM: ".
/// A moved-from object has no URL, bookmark or access. Use an object from one thread at a time.
class DRAVELIN_EXPORT SecurityScopedBookmark
{
public:
    /// Keeps the URL and makes its bookmark. hasSecurityAccess() is true without asking the service, since a URL from
    /// a file dialog comes with its access; when the object goes, that access is stopped though it was not started
    /// here.
    /// \operation{initWithUrl:}
    explicit SecurityScopedBookmark(const QUrl &url);

    /// Resolves the bookmark without asking the user, renews it when it is stale, and starts access. Empty data leaves
    /// an object without URL and bookmark; with data that does not resolve, getSecurityUrl() is empty, and nothing is
    /// logged. When a stale one cannot be renewed, which is logged, there is neither URL nor bookmark: keep the data.
    /// \operation{initWithBookmarkData:}
    explicit SecurityScopedBookmark(const QByteArray &bookmarkData);

    SecurityScopedBookmark(SecurityScopedBookmark &&other) noexcept;
    SecurityScopedBookmark &operator=(SecurityScopedBookmark &&other) noexcept;
    Q_DISABLE_COPY(SecurityScopedBookmark)
    ~SecurityScopedBookmark();

    /// The file's URL, with access started; empty when there is none or access cannot be had.
    /// \operation{getSecurityUrl}
    [[nodiscard]] QUrl getSecurityUrl();

    /// The path of getSecurityUrl() read as the text of a URL: without a scheme, so not a file URL. Empty for a path
    /// that is not valid URL text, such as one with spaces, letters beyond ASCII or a "%" that begins no escape.
    /// \operation{getRegularUrlFromData}
    [[nodiscard]] QUrl getRegularUrlFromData();

    /// What to store. Made now if there is none yet; absent when that fails.
    /// \operation{getBookmarkData}
    [[nodiscard]] QByteArray getBookmarkData();

    /// Starts access unless it is held.
    /// \return whether access is held; false without URL
    /// \operation{startAccess}
    bool startAccess();

    /// Stops access if it is held. getSecurityUrl() starts it again.
    /// \operation{stopAccess}
    void stopAccess();

    /// Moves access to another URL. The bookmark stays that of the old one until createBookmarkData().
    /// \operation{installUrl:}
    void installUrl(const QUrl &url);

    /// Resolves the bookmark anew and starts access. Unless the bookmark is stale, access that is held already is not
    /// moved to the new URL, and hasSecurityAccess() stays true even when nothing is found: call stopAccess() first.
    /// \param mayAsk whether a service that can may ask the user and mount volumes
    /// \operation{resolveWithUI:}
    void resolveWithUI(bool mayAsk);

    /// Resolves the bookmark; a stale one is made anew, and access moves to its URL. Otherwise the
    /// object keeps the URL that it has.
    /// \param options of BookmarkService::ResolutionOption; security scope is added
    /// \return an empty URL when it does not resolve, which is logged only for one that was stale
    /// \operation{resolveSecurityUrl:}
    QUrl resolveSecurityUrl(quint64 options);

    /// Makes the bookmark of a URL and keeps it: for reading and writing, or else for reading only. Failure is logged,
    /// and leaves no bookmark.
    /// \operation{createBookmarkData:}
    void createBookmarkData(const QUrl &url);

    /// Logs "SSBM: context (error)", or "SSBM: context" when `error` is absent.
    /// \operation{handleError:context:}
    void handleError(const QString &error, const QString &context) const;

    /// Whether the object holds access, as far as it knows.
    /// \operation{hasSecurityAccess}
    [[nodiscard]] bool hasSecurityAccess() const noexcept { return m_hasSecurityAccess; }

    /// Always 0.
    /// \operation{options}
    [[nodiscard]] quint64 options() const noexcept { return 0; }

private:
    std::shared_ptr<BookmarkService> m_service;
    QUrl m_securityScopedUrl;
    QByteArray m_bookmarkData;
    bool m_hasSecurityAccess = false;
};

} // namespace dravelin
