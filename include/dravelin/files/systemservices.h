// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/keyedarchiver.h>
#include <dravelin/platform/keyedunarchiver.h>
#include <dravelin/platform/selector.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <concepts>
#include <functional>
#include <memory>
#include <utility>

namespace dravelin {

inline namespace SystemServices {

/// Runs a command in the shell, `/bin/sh -c`, and waits until it has closed its output.
///
///     const QString listing = dravelin::runShellCommand("ls -l");
///
/// Standard output and standard error share one pipe, so their lines are in the order in which they were written. The
/// exit status is dropped. A process that the command leaves behind and that has the pipe open holds the call up until
/// it closes it: redirect its output. ShellCommand is the form that does not block.
///
/// The command has this process's environment, working folder and standard input: one that reads standard input waits
/// for whatever that is, so give it `</dev/null` where it should not. It starts with no signal blocked, and SIGPIPE and
/// SIGCHLD as a shell expects them; this process's own signals and locale stay as they are. Descriptors that are not
/// close-on-exec are inherited as ever.
///
/// \param command handed to the shell in UTF-8; absent text is the command "(null)". No quotes are added: never put text
/// from elsewhere into it.
/// \return everything the command wrote, a byte order mark included; empty, not absent, when that was nothing; absent
/// when it is not valid UTF-8, and when the shell could not be started, both of which is a line in the log. That is so
/// for commands that contain a null character, and for those of 128 KiB and more.
/// \cost starting a shell; the output at the speed of the pipe, twice its length in memory. From any thread.
/// \operation{runShellCommand}
[[nodiscard]] DRAVELIN_EXPORT QString runShellCommand(const QString &command);

/// The version of this application for display, such as "2.1 build 57": what Bundle::mainBundle() has under
/// CFBundleShortVersionString, and, if asked for and there, under CFBundleVersion.
/// \return absent when there is no version; with a build number then "(null) build 57"
/// \operation{versionNumber}
[[nodiscard]] DRAVELIN_EXPORT QString versionNumber(bool withBuildNumber);

/// Calls an operation without arguments by its name, as perform() does, on the calling thread. Nothing for no target. An
/// operation that the target does not have is a line in the log.
/// \operation{callAction}
DRAVELIN_EXPORT void callAction(QObject *target, Selector operation);

/// The same for an operation that the compiler checks: a member function, or a callable that takes the target.
template <class Target, std::invocable<Target *> Operation>
void callAction(Target *target, Operation &&operation)
{
    if (target)
        std::invoke(std::forward<Operation>(operation), target);
}

/// Calls an operation with one argument by its name.
///
///     dravelin::callActionWithId(ruler, "marginChanged:", slider);   // ruler->marginChanged(slider)
///
/// \param argument an object, an integer, a text or any value
/// \operation{callActionWithId}
DRAVELIN_EXPORT void callActionWithId(QObject *target, Selector operation, CallArgument argument);

/// The same for an operation that the compiler checks.
template <class Target, class Argument, std::invocable<Target *, Argument> Operation>
void callActionWithId(Target *target, Operation &&operation, Argument &&argument)
{
    if (target)
        std::invoke(std::forward<Operation>(operation), target, std::forward<Argument>(argument));
}

/// The archive of one object or value under the key "objectDataKey", see KeyedArchiver.
///
///     const QByteArray data = dravelin::encodeObjectData(shape);          // std::shared_ptr<Shape>
///     const auto copy = dravelin::decodeObjectData<Shape>(data);
///
/// What cannot be archived is a line in the log and missing there; an archive of an absent value decodes to nothing.
/// \cost linear in what is archived
/// \operation{encodeObjectData}
[[nodiscard]] DRAVELIN_EXPORT QByteArray encodeObjectData(const QVariant &object);
template <CodingClass T>
[[nodiscard]] QByteArray encodeObjectData(const std::shared_ptr<T> &object)
{
    return encodeObjectData(QVariant::fromValue(CodingPointer(object)));
}

/// What encodeObjectData() archived.
/// \return absent when there is no object under that key, and when `data` is no archive or the object is damaged, both
/// of which is a line in the log
/// \operation{decodeObjectData:}
[[nodiscard]] DRAVELIN_EXPORT QVariant decodeObjectData(const QByteArray &data);

/// The same in its own type: a `std::shared_ptr<T>` for classes of archived objects, null for an object of another
/// class; otherwise a T, converted as QVariant::value() does.
template <class T>
[[nodiscard]] Decoded<T> decodeObjectData(const QByteArray &data)
{
    KeyedUnarchiver unarchiver(data);
    return unarchiver.decodeObjectForKey<T>(QStringLiteral("objectDataKey"));
}

} // namespace SystemServices

} // namespace dravelin
