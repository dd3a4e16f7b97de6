// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"

class CommandPanel;
class NotificationPanel;
class QLabel;
class QLineEdit;

/// Commands of the shell, notifications, and the versions of application and library.
class SystemPage : public Page
{
    Q_OBJECT

public:
    SystemPage();

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    class TourSteps;

    QWidget *makeVersion();
    void setBuild(const QString &build);

    CommandPanel *m_commands;
    NotificationPanel *m_notifications;
    QLineEdit *m_build;
    QLabel *m_version;
};
