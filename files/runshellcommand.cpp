// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/systemservices.h>

#include <dravelin/platform/log.h>

#include "platform/childprocess.h"
#include "platform/commandoutput.h"
#include "platform/lateprocesses.h"

using namespace Qt::StringLiterals;

namespace dravelin {

QString SystemServices::runShellCommand(const QString &command)
{
    auto process = ChildProcess::runInShell(command, {});
    if (!process)
        return {};
    const QString text = detail::readText(process->output());
    process->closeOutput();
    detail::reapSoon(*std::move(process));
    if (text.isNull())
        logWarning(u"Shell command \"%1\" wrote what is not valid UTF-8"_s.arg(ChildProcess::shortened(command)));
    return text;
}

} // namespace dravelin
