// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/files/notifications.h>

#include <QtWidgets/QWidget>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QFormLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

/// Shows notifications, and logs what becomes of them.
class NotificationPanel : public QWidget
{
    Q_OBJECT

public:
    NotificationPanel();

    [[nodiscard]] QLineEdit *titleLine() const { return m_title; }
    [[nodiscard]] QLineEdit *messageLine() const { return m_message; }
    [[nodiscard]] QCheckBox *actions() const { return m_actions; }
    [[nodiscard]] QDoubleSpinBox *seconds() const { return m_seconds; }
    [[nodiscard]] QPushButton *showButton() const { return m_show; }
    [[nodiscard]] QPushButton *replaceButton() const { return m_replace; }
    [[nodiscard]] QPushButton *withdrawButton() const { return m_withdraw; }
    [[nodiscard]] QString log() const;

private:
    QFormLayout *makeForm();
    QWidget *makeButtons();
    [[nodiscard]] dravelin::NotificationContent content() const;
    void deliver();
    void enableButtons();
    void note(int number, const QString &what);

    std::shared_ptr<dravelin::UserNotification> m_last;
    int m_count = 0;
    QLineEdit *m_title, *m_message;
    QCheckBox *m_actions;
    QComboBox *m_urgency;
    QDoubleSpinBox *m_seconds;
    QPushButton *m_show, *m_replace, *m_withdraw;
    QPlainTextEdit *m_log;
};
