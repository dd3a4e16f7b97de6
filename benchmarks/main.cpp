// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <QtWidgets/QApplication>

#include <benchmark/benchmark.h>

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Dravelin"));
    QCoreApplication::setApplicationName(QStringLiteral("benchmarks"));
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
