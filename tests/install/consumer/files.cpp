// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/files.h>

#include <QtCore/QDir>

using namespace dravelin;

namespace {

void filesAreRemembered()
{
    const QUrl folder = QUrl::fromLocalFile(QDir::tempPath());
    const auto service = BookmarkService::current();
    bool stale = true;
    CHECK(service->resolve(service->create(folder), 0, &stale).toLocalFile() == QDir::tempPath() && !stale);
}

} // namespace

void useFiles() { filesAreRemembered(); }
