// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/version.h>

#include <QtWidgets/QApplication>

#include <cstdio>
#include <cstdlib>

void fail(const char *file, int line, const char *condition)
{
    std::printf("The consumer fails: %s:%d: %s\n", file, line, condition);
    std::exit(1);
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    usePlatform();
    useValues();
    useEncoding();
    useDiagnostics();
    useControl();
    usePreferences();
    useImaging();
    useSound();
    useInterface();
    useFiles();
    std::puts("Dravelin " DRAVELIN_VERSION ": the consumer works");
}
