// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/processname.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

QString readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The kernel keeps 15 bytes of a process's name; the rest is taken from its command line.
QString processName(qint64 processId)
{
    const QString process = u"/proc/%1/"_s.arg(processId);
    QString name = readFile(process + u"comm"_s);
    name.chop(1);
    QString program = QFileInfo(readFile(process + u"cmdline"_s).section(QChar(u'\0'), 0, 0)).fileName();
    if (name.toUtf8().size() == 15 && program.startsWith(name))
        return program;
    return name.isEmpty() ? QString() : name;
}

} // namespace

QString ProcessNames::of(qint64 processId)
{
    const auto known = m_names.constFind(processId);
    return known != m_names.cend() ? *known : *m_names.insert(processId, processName(processId));
}

} // namespace dravelin
