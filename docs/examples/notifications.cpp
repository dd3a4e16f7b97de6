// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/notifications.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaEnum>
#include <QtCore/QTextStream>

using dravelin::NotificationContent;
using dravelin::UserNotification;

static QTextStream out(stdout);

//! [center]
class Desktop : public dravelin::UserNotificationCenter
{
public:
    quint64 deliver(const NotificationContent &content, quint64 number) override
    {
        out << "[" << content.title << ": " << content.informativeText << "]\n";
        return number ? number : ++m_last;
    }
    void withdraw(quint64 number) override { Q_EMIT closed(number, CloseReason::Withdrawn); }
    void click(const QString &action)
    {
        Q_EMIT activated(m_last, action);
        Q_EMIT closed(m_last, CloseReason::Dismissed);
    }

private:
    quint64 m_last = 0;
};
//! [center]

class Window : public QObject
{
public:
    void exported()
    {
        //! [actions]
        auto done = UserNotification::deliver({.title = "Export",
                                               .informativeText = "42 pictures",
                                               .actions = {{"default", "Open"}, {"folder", "Open folder"}}});
        connect(done.get(), &UserNotification::activated, this, &Window::open);
        //! [actions]
    }
    void open(const QString &actionKey) { out << "open: " << actionKey << '\n'; }
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    //! [test]
    auto desktop = std::make_shared<Desktop>();
    dravelin::UserNotificationCenter::setCurrent(desktop);
    //! [test]

    //! [show]
    dravelin::showNotification("Export", "Finished");
    //! [show]

    Window window;
    window.exported();
    desktop->click("folder");

    //! [replace]
    auto job = UserNotification::deliver({.title = "Upload", .informativeText = "1 of 3", .timeout = 0});
    QObject::connect(job.get(), &UserNotification::closed, [](UserNotification::CloseReason reason) {
        out << QMetaEnum::fromType<UserNotification::CloseReason>().valueToKey(int(reason)) << '\n';
    });
    job->replace({.title = "Upload", .informativeText = "2 of 3", .timeout = 0});
    job->withdraw();
    //! [replace]
    dravelin::UserNotificationCenter::setCurrent(nullptr);
}
