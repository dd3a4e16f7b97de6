// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <memory>

namespace dravelin {

/// Remembers files so that they are found again after being renamed or moved. The default service keeps, in compact
/// bytes, the path together with the identity that the file system gave the item; tests put one of their own in its
/// place.
///
///     const auto service = dravelin::BookmarkService::current();
///     const QByteArray bookmark = service->create(QUrl::fromLocalFile("/home/me/plan.txt"));
///     bool stale = false;
///     const QUrl now = service->resolve(bookmark, 0, &stale);     // also after "mv plan.txt plan-b.txt"
///
/// From any thread.
class DRAVELIN_EXPORT BookmarkService
{
public:
    /// What a bookmark is made for. The default service does the same for all of them.
    enum CreationOption : quint64 {
        NSURLBookmarkCreationSuitableForBookmarkFile = 1024,
        NSURLBookmarkCreationWithSecurityScope = 2048,
        NSURLBookmarkCreationSecurityScopeAllowOnlyReadAccess = 4096,
    };
    /// How far resolving may go. The default service neither asks the user nor mounts, whatever the options.
    enum ResolutionOption : quint64 {
        NSURLBookmarkResolutionWithoutUI = 256,
        NSURLBookmarkResolutionWithoutMounting = 512,
        NSURLBookmarkResolutionWithSecurityScope = 1024,
    };

    virtual ~BookmarkService();

    /// \param error receives the cause in words when there is no bookmark; may be null
    /// \return the bookmark; absent when `url` is no local file or nothing is there. A symbolic link stands for itself.
    [[nodiscard]] virtual QByteArray create(const QUrl &url, quint64 options = 0, QString *error = nullptr) = 0;

    /// Where the item is now. The default service takes the old path when something is there, whatever it is; otherwise
    /// it looks for the same item in the old directory, then below and a few levels above it, on the same file system,
    /// and gives up after 20,000 directory entries.
    /// \param stale receives true when the bookmark should be made anew: the item has moved or another took its place;
    /// may be null
    /// \param error receives the cause in words when there is no URL; may be null
    /// \return an empty URL when the item is not found or `bookmark` is no bookmark
    [[nodiscard]] virtual QUrl resolve(const QByteArray &bookmark, quint64 options = 0, bool *stale = nullptr,
                                       QString *error = nullptr) = 0;

    /// Opens access to the item of a bookmark; each success is balanced by stopAccess(). Where nothing restricts
    /// access, as with the default service, it succeeds for what is readable.
    [[nodiscard]] virtual bool startAccess(const QUrl &url);
    virtual void stopAccess(const QUrl &url);

    /// The service in use.
    [[nodiscard]] static std::shared_ptr<BookmarkService> current();

    /// Replaces the process's service; an empty pointer brings the default back.
    /// \return the service that was replaced, empty for the default one
    static std::shared_ptr<BookmarkService> setCurrent(std::shared_ptr<BookmarkService> service);
};

} // namespace dravelin
