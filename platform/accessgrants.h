// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/filedescriptor.h>
#include <platform/fileidentity.h>

#include <map>
#include <mutex>

namespace dravelin::detail {

/// Files and directories to which there is access, each counted by its path and held open, while there are not too
/// many. From any thread.
class AccessGrants
{
public:
    /// A quarter of the files that a program may commonly have open: a long list of documents leaves room for others.
    static constexpr size_t MaximumHeld = 256;

    /// False when the item at `path` cannot be read.
    [[nodiscard]] bool start(const QByteArray &path);
    /// Does nothing without a start.
    void stop(const QByteArray &path);

    /// Where the item is now when it is held; absent otherwise. However far it was moved: the kernel knows.
    [[nodiscard]] QByteArray pathOf(const FileIdentity &identity) const;

private:
    struct Grant
    {
        FileDescriptor descriptor;
        FileIdentity identity; ///< of what is held
        quint64 count = 0;
    };

    mutable std::mutex m_mutex;
    std::map<QByteArray, Grant> m_grants;
};

} // namespace dravelin::detail
