// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/fileidentity.h>

#include <map>
#include <mutex>

namespace dravelin::detail {

/// Files and directories held open, each counted by its path. From any thread.
class AccessGrants
{
public:
    AccessGrants() = default;
    ~AccessGrants();
    Q_DISABLE_COPY_MOVE(AccessGrants)

    /// False when the item at `path` cannot be read.
    [[nodiscard]] bool start(const QByteArray &path);
    /// Does nothing without a start.
    void stop(const QByteArray &path);

    /// Where the item is now when it is held; absent otherwise. However far it was moved: the kernel knows.
    [[nodiscard]] QByteArray pathOf(const FileIdentity &identity) const;

private:
    struct Grant
    {
        int descriptor;
        FileIdentity identity;
        quint64 count = 0;
    };

    mutable std::mutex m_mutex;
    std::map<QByteArray, Grant> m_grants;
};

} // namespace dravelin::detail
