// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "argumentdomain.h"

namespace dravelin {

namespace {

bool isNumber(const QString &text)
{
    bool ok = false;
    text.toDouble(&ok);
    return ok;
}

bool isKey(const QString &text) { return text.size() > 1 && text[0] == u'-' && text[1] != u'-' && !isNumber(text); }

bool isValue(const QString &text) { return !text.startsWith(u'-') || isNumber(text); }

} // namespace

QVariantMap argumentDomain(const QStringList &arguments)
{
    QVariantMap pairs;
    for (qsizetype i = 1; i + 1 < arguments.size(); ++i) {
        if (!isKey(arguments[i]) || !isValue(arguments[i + 1]))
            continue;
        pairs.insert(arguments[i].mid(1), arguments[i + 1]);
        ++i;
    }
    return pairs;
}

} // namespace dravelin
