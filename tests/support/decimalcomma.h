// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QLocale>

#include <clocale>
#include <string>

/// While it lives, numbers have a decimal comma for Qt, and for the C library too where the system has such a locale.
class DecimalComma
{
public:
    DecimalComma() : m_qt(QLocale()), m_c(std::setlocale(LC_NUMERIC, nullptr))
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        for (const char *name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE"}) {
            if (std::setlocale(LC_NUMERIC, name))
                break;
        }
    }
    ~DecimalComma()
    {
        std::setlocale(LC_NUMERIC, m_c.c_str());
        QLocale::setDefault(m_qt);
    }
    Q_DISABLE_COPY_MOVE(DecimalComma)

private:
    QLocale m_qt;
    std::string m_c;
};
