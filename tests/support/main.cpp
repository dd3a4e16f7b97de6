// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Dravelin"));
    QCoreApplication::setApplicationName(QStringLiteral("tests"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.2"));
    return RUN_ALL_TESTS();
}
