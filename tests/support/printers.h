// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDebug>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <ostream>

// Readable values in failed expectations; absent ones say so.

QT_BEGIN_NAMESPACE

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << (text.isNull() ? std::string("absent text") : '"' + text.toStdString() + '"');
}

inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << (bytes.isNull() ? std::string("absent bytes") : "bytes " + bytes.toHex(' ').toStdString());
}

inline void PrintTo(const QVariant &value, std::ostream *out)
{
    QString text;
    QDebug(&text) << value;
    *out << text.toStdString();
}

QT_END_NAMESPACE
