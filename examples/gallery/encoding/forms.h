// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

#include <functional>

/// A way to write bytes and to read them back.
struct Form
{
    QString name;
    QString fileSuffix;
    std::function<QByteArray(const QByteArray &bytes)> write;
    std::function<QByteArray(const QByteArray &written)> read;
};

/// All that the library has for bytes.
QList<Form> allForms();

/// How a form did.
struct FormResult
{
    QString name;
    QString fileSuffix;
    qsizetype inputSize = 0;
    QByteArray written = {};
    double writeSeconds = 0;
    double readSeconds = 0;
    bool isSame = false; ///< whether the bytes came back
};

FormResult tryForm(const Form &form, const QByteArray &bytes);

/// "1.2 GB/s"; of bytes before they were written.
QString rateText(qsizetype bytes, double seconds);
