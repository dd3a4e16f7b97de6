// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>

namespace dravelin {

/// The names of processes, each read once.
class ProcessNames
{
public:
    /// Absent when there is no such process.
    QString of(qint64 processId);

private:
    QHash<qint64, QString> m_names{{0, QString()}}; // 0 is unknown
};

} // namespace dravelin
