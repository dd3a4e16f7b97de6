// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "system/notificationpanel.h"

#include <QtCore/QMetaEnum>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

using dravelin::UserNotification;
using namespace Qt::StringLiterals;

NotificationPanel::NotificationPanel()
    : m_title(new QLineEdit(tr("Export"))),
      m_message(new QLineEdit(tr("42 pictures, <all> of them & more"))),
      m_actions(new QCheckBox(tr("Offer to o&pen"))),
      m_urgency(new QComboBox),
      m_seconds(new QDoubleSpinBox),
      m_show(new QPushButton(tr("&Show"))),
      m_replace(new QPushButton(tr("R&eplace"))),
      m_withdraw(new QPushButton(tr("&Withdraw"))),
      m_log(new QPlainTextEdit)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addLayout(makeForm(), 3);
    layout->addWidget(m_log, 2);
    m_log->setReadOnly(true);
    m_log->setTabChangesFocus(true);
    m_log->setMaximumBlockCount(1000);
    m_log->setAccessibleName(tr("What became of the notifications"));
    m_log->setPlaceholderText(tr("What becomes of them appears here"));
    connect(m_show, &QPushButton::clicked, this, &NotificationPanel::deliver);
    connect(m_replace, &QPushButton::clicked, this, [this] { m_last->replace(content()); });
    connect(m_withdraw, &QPushButton::clicked, this, [this] { m_last->withdraw(); });
    enableButtons();
}

QFormLayout *NotificationPanel::makeForm()
{
    auto *form = new QFormLayout;
    m_urgency->addItems({tr("low"), tr("normal"), tr("critical")});
    m_urgency->setCurrentIndex(int(dravelin::NotificationUrgency::Normal));
    m_seconds->setRange(-1, 3600);
    m_seconds->setDecimals(1);
    m_seconds->setValue(-1);
    m_seconds->setSpecialValueText(tr("as the desktop decides"));
    m_seconds->setSuffix(tr(" s"));
    m_seconds->setToolTip(tr("How long it stays; 0 s: until it is closed."));
    m_actions->setChecked(true);
    form->addRow(tr("T&itle:"), m_title);
    form->addRow(tr("&Message:"), m_message);
    form->addRow(tr("&Urgency:"), m_urgency);
    form->addRow(tr("Sta&ys for:"), m_seconds);
    form->addRow(m_actions);
    form->addRow(makeButtons());
    return form;
}

QWidget *NotificationPanel::makeButtons()
{
    auto *panel = new QWidget;
    auto *layout = new QHBoxLayout(panel);
    layout->setContentsMargins({});
    layout->addWidget(m_show);
    layout->addWidget(m_replace);
    layout->addWidget(m_withdraw);
    layout->addStretch(1);
    return panel;
}

QString NotificationPanel::log() const { return m_log->toPlainText(); }

dravelin::NotificationContent NotificationPanel::content() const
{
    dravelin::NotificationContent content{.title = m_title->text(),
                                          .informativeText = m_message->text(),
                                          .icon = style()->standardIcon(QStyle::SP_DialogSaveButton),
                                          .urgency = dravelin::NotificationUrgency(m_urgency->currentIndex()),
                                          .timeout = m_seconds->value()};
    if (m_actions->isChecked())
        content.actions = {{u"default"_s, tr("Open")}, {u"folder"_s, tr("Open folder")}};
    return content;
}

void NotificationPanel::deliver()
{
    const int number = ++m_count;
    m_last = UserNotification::deliver(content());
    const UserNotification *notification = m_last.get();
    connect(notification, &UserNotification::openChanged, this, &NotificationPanel::enableButtons);
    connect(notification, &UserNotification::delivered, this, [=, this] { note(number, tr("shown")); });
    connect(notification, &UserNotification::activated, this,
            [=, this](const QString &key) { note(number, tr("action \"%1\"").arg(key)); });
    connect(notification, &UserNotification::closed, this, [=, this](UserNotification::CloseReason reason) {
        const char *name = QMetaEnum::fromType<UserNotification::CloseReason>().valueToKey(int(reason));
        note(number, tr("closed: %1").arg(QLatin1String(name)));
        if (reason == UserNotification::CloseReason::NotShown)
            note(number, tr("nothing on this desktop shows notifications"));
    });
    enableButtons();
}

void NotificationPanel::enableButtons()
{
    m_replace->setEnabled(m_last != nullptr);
    m_withdraw->setEnabled(m_last && m_last->isOpen());
}

void NotificationPanel::note(int number, const QString &what)
{
    m_log->appendPlainText(u"%1: %2"_s.arg(number).arg(what));
}
