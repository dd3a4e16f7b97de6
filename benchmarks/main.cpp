// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <QtCore/QCoreApplication>

#include <benchmark/benchmark.h>

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Dravelin"));
    QCoreApplication::setApplicationName(QStringLiteral("benchmarks"));
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
