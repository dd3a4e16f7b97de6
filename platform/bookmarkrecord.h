// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/fileidentity.h>

#include <QtCore/QString>

namespace dravelin::detail {

/// What the bytes of a bookmark say.
struct BookmarkRecord
{
    QByteArray path; ///< absolute, in the file system's encoding
    FileIdentity identity;
    bool isReadOnly = false;
};

[[nodiscard]] QByteArray writeBookmark(const BookmarkRecord &record);

/// \param error receives the cause in words when there is no record; may be null
/// \return nothing for what is no bookmark, is damaged or was made by a later version. Records of older versions are
/// read too.
[[nodiscard]] std::optional<BookmarkRecord> readBookmark(const QByteArray &bookmark, QString *error);

} // namespace dravelin::detail
