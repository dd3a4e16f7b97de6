// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "tour.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QTextStream>
#include <QtCore/QThread>
#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

Tour::Tour(const QDir &folder) : m_folder(folder) { QDir().mkpath(folder.path()); }

void Tour::did(const QString &what) { m_done << what; }

bool Tour::expect(bool holds, const QString &what)
{
    (holds ? m_done : m_failed) << what;
    return holds;
}

bool Tour::waitFor(const std::function<bool()> &condition, const QString &what)
{
    const QDeadlineTimer deadline(180'000); // nothing takes this long but on a machine that does much else
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        QThread::msleep(2);
    }
    return expect(condition(), what);
}

void Tour::picture(QWidget *widget, const QString &name)
{
    QCoreApplication::processEvents();
    const QString file = name + u".png"_s;
    if (expect(widget->grab().save(m_folder.filePath(file)), u"picture "_s + file))
        m_files << file;
}

void Tour::text(const QString &name, const QString &content)
{
    const QString fileName = name + u".txt"_s;
    QFile file(m_folder.filePath(fileName));
    const QByteArray bytes = content.toUtf8();
    if (expect(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush(),
               u"text "_s + fileName))
        m_files << fileName;
}

void Tour::file(const QString &name)
{
    if (expect(m_folder.exists(name), u"file "_s + name))
        m_files << name;
}

int Tour::summarise() const
{
    QTextStream out(stdout);
    for (const QString &line : m_done)
        out << "done    " << line << '\n';
    for (const QString &line : m_failed)
        out << "FAILED  " << line << '\n';
    out << "Gallery tour: " << m_done.size() << " steps done, " << m_failed.size() << " failed, " << m_files.size()
        << " files in " << m_folder.path() << '\n';
    return m_failed.isEmpty() ? 0 : 1;
}
