// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "files/samplefile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

using namespace Qt::StringLiterals;

SampleFile::SampleFile(const QDir &folder, const QString &name) : m_folder(folder), m_name(name) {}

bool SampleFile::make()
{
    QFile file(path());
    return m_folder.mkpath(u"."_s) && file.open(QIODevice::WriteOnly) && file.write("A sample file.\n") > 0;
}

bool SampleFile::rename()
{
    const QFileInfo info(m_name);
    QString name;
    do {
        name = info.baseName().section(u'-', 0, 0) + u"-%1."_s.arg(++m_version) + info.suffix();
    } while (m_folder.exists(name));
    return m_folder.rename(m_name, name) && !(m_name = name).isEmpty();
}

bool SampleFile::replace()
{
    QSaveFile file(path());
    return file.open(QIODevice::WriteOnly) && file.write("A sample file with one more line.\nThis one.\n") > 0
           && file.commit();
}

bool SampleFile::remove() { return m_folder.remove(m_name); }
