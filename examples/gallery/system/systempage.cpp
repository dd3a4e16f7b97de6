// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "system/systempage.h"

#include "system/commandpanel.h"
#include "system/notificationpanel.h"

#include <dravelin/files/buildidentity.h>
#include <dravelin/files/systemservices.h>
#include <dravelin/platform/bundle.h>

#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

using namespace Qt::StringLiterals;

namespace {

QWidget *framed(const QString &title, QWidget *content)
{
    auto *group = new QGroupBox(title);
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(content);
    return group;
}

} // namespace

SystemPage::SystemPage()
    : m_commands(new CommandPanel),
      m_notifications(new NotificationPanel),
      m_build(new QLineEdit),
      m_version(new QLabel)
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(framed(tr("Commands"), m_commands), 1);
    layout->addWidget(framed(tr("Notifications"), m_notifications));
    layout->addWidget(framed(tr("Version"), makeVersion()));
    connect(m_build, &QLineEdit::textChanged, this, &SystemPage::setBuild);
    setBuild({});
}

QString SystemPage::title() const { return tr("System"); }

QWidget *SystemPage::makeVersion()
{
    auto *panel = new QWidget;
    auto *layout = new QHBoxLayout(panel);
    layout->setContentsMargins({});
    m_build->setFixedWidth(80);
    auto *label = new QLabel(tr("&Build number:"));
    label->setBuddy(m_build);
    layout->addWidget(label);
    layout->addWidget(m_build);
    layout->addWidget(m_version, 1);
    layout->addWidget(new QLabel(QString::fromLatin1(dravelin::DravelinVersionString).trimmed()));
    return panel;
}

void SystemPage::setBuild(const QString &build)
{
    dravelin::Bundle::mainBundle().setObject(build.isEmpty() ? QVariant() : build, u"CFBundleVersion"_s);
    m_version->setText(
        tr("Gallery %1, with build number: %2").arg(dravelin::versionNumber(false), dravelin::versionNumber(true)));
}
