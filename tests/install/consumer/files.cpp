// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/files.h>
#include <dravelin/platform.h>

#include <QtCore/QDir>
#include <QtCore/QEventLoop>

using namespace dravelin;

namespace {

void filesAreRemembered()
{
    const QUrl folder = QUrl::fromLocalFile(QDir::tempPath());
    const auto service = BookmarkService::current();
    bool stale = true;
    CHECK(service->resolve(service->create(folder), 0, &stale).toLocalFile() == QDir::tempPath() && !stale);
}

void accessIsKept()
{
    const QUrl folder = QUrl::fromLocalFile(QDir::tempPath());
    SecurityScopedBookmark chosen(folder);
    CHECK(chosen.hasSecurityAccess() && chosen.options() == 0);
    SecurityScopedBookmark again(chosen.getBookmarkData());
    CHECK(again.getSecurityUrl() == folder && again.getRegularUrlFromData().path() == QDir::tempPath());
    again.stopAccess();
    CHECK(!again.hasSecurityAccess() && again.startAccess());
    again.createBookmarkData(folder);
    CHECK(again.resolveSecurityUrl(0) == folder);
    again.installUrl(folder);
    again.resolveWithUI(false);
    CHECK(again.hasSecurityAccess());
    again.handleError({}, "only to see the line");
}

class Door : public Object
{
    Q_OBJECT

public:
    Q_INVOKABLE void open() { isOpen = true; }
    Q_INVOKABLE void setWidth(int value) { width = value; }
    bool isOpen = false;
    int width = 0;
};

void servicesAreThere()
{
    CHECK(runShellCommand("echo one; echo two >&2") == "one\ntwo\n");
    Bundle::mainBundle().setObject("57", "CFBundleVersion");
    CHECK(versionNumber(true).endsWith(" build 57"));
    Door door;
    callAction(&door, "open");
    callActionWithId(&door, "setWidth:", 90);
    CHECK(door.isOpen && door.width == 90);
    CHECK(decodeObjectData(encodeObjectData("kept")) == "kept");
    CHECK(DravelinVersionNumber == 1.0 && QByteArray(DravelinVersionString).endsWith("Dravelin-1\n"));
    showNotification("Consumer", "It works");
}

void commandsRunBeside()
{
    ShellCommand command;
    command.setKeepsOutput(true);
    int status = -1;
    QEventLoop loop;
    QObject::connect(&command, &ShellCommand::finished, &loop, [&](int exitStatus) {
        status = exitStatus;
        loop.quit();
    });
    CHECK(command.start("echo out; exit 3"));
    loop.exec();
    CHECK(status == 3 && command.output() == "out\n");
}

} // namespace

void useFiles()
{
    filesAreRemembered();
    accessIsKept();
    servicesAreThere();
    commandsRunBeside();
}

#include "files.moc"
