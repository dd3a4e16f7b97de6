// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <memory>
#include <optional>

namespace dravelin {

/// What a bookmark of the default service says, without looking for the file.
struct BookmarkContents
{
    QUrl url;                   ///< where the item was
    QDateTime created;          ///< when, in UTC; invalid where the file system does not keep that
    std::optional<qint64> size; ///< bytes when the bookmark was made; not in bookmarks of older versions
    bool isReadOnly = false;    ///< made with AllowOnlyReadAccess
};

/// Remembers files so that they are found again after being renamed or moved. The default service keeps, in compact
/// bytes with a checksum, the path together with the identity that the file system gave the item; tests put a service
/// of their own in its place.
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
    /// What a bookmark is made for. The default service makes one with security scope only of what can be read, and
    /// written unless read access is all that is asked for.
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

    /// \param url a relative path counts from the current directory
    /// \param error receives the cause in words when there is no bookmark; may be null
    /// \return the bookmark; absent when `url` is no local file, or the item is missing or not accessible. A symbolic
    /// link stands for itself.
    /// \cost a few questions to the file system about the one item; its contents are not read
    [[nodiscard]] virtual QByteArray create(const QUrl &url, quint64 options = 0, QString *error = nullptr) = 0;

    /// Where the item is now. The default service takes the old path when something is there, except what is no file in
    /// place of a file and what is no directory in place of a directory; links count as what they lead to. Otherwise it
    /// looks for the same item: among those to which access is held, at the same place of a local disk that is mounted
    /// elsewhere now, then in the old directory, then below and a few levels above it, on the same file system, and
    /// gives up after 20,000 entries of directories other than the old one. What is found in the trash counts as lost.
    /// \param stale receives true when the bookmark should be made anew: the item has moved or another took its place;
    /// may be null
    /// \param error receives the cause in words when there is no URL; may be null
    /// \return an empty URL when the item is not found or `bookmark` is no bookmark. Bytes of a name that are no UTF-8
    /// are percent escapes of the URL, which this class understands and QUrl::toLocalFile() does not.
    /// \cost as create() when the item is in its place; otherwise a search of the directories
    [[nodiscard]] virtual QUrl resolve(const QByteArray &bookmark, quint64 options = 0, bool *stale = nullptr,
                                       QString *error = nullptr) = 0;

    /// Opens access to the item of a bookmark; each success is balanced by stopAccess() with the same URL. With the
    /// default service it succeeds for what is readable, and holds the item by one file descriptor until it was stopped
    /// as often as started: resolve() then finds it wherever it is moved to on its file system, and no other item can
    /// get its inode, not even when it is deleted. Its volume cannot be unmounted as long. No more than 256 items are
    /// held at a time, and none when the process has no descriptor left; access to others only counts. This class's own
    /// function only tells whether a file is readable.
    [[nodiscard]] virtual bool startAccess(const QUrl &url);
    /// More often than startAccess() does no harm by itself, but may take away what another part of the program
    /// started.
    virtual void stopAccess(const QUrl &url);

    /// What a bookmark of the default service says.
    /// \param error receives the cause in words when there is nothing; may be null
    /// \return nothing when the data is no such bookmark, is damaged or was made by a later version
    [[nodiscard]] static std::optional<BookmarkContents> contents(const QByteArray &bookmark, QString *error = nullptr);

    /// The service in use.
    [[nodiscard]] static std::shared_ptr<BookmarkService> current();

    /// Replaces the process's service; an empty pointer brings the default back.
    /// \return the service that was replaced, empty for the default one
    static std::shared_ptr<BookmarkService> setCurrent(std::shared_ptr<BookmarkService> service);
};

} // namespace dravelin
