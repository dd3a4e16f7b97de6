// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>

static QTextStream out(stdout);

//! [counter]
class Counter : public dravelin::Object
{
    Q_OBJECT

public:
    Q_INVOKABLE void step() { add(1); }
    Q_INVOKABLE void add(qint64 number) { out << "count " << (m_count += number) << '\n'; }
    Q_INVOKABLE void add(const QString &text) { out << "text " << text << '\n'; }
    Q_INVOKABLE void add(QObject *object) { out << "object " << object->objectName() << '\n'; }
    void reset(QObject *) { out << "count " << (m_count = 0) << '\n'; }

private:
    qint64 m_count = 0;
};
//! [counter]

int main()
{
    //! [perform]
    Counter counter;
    counter.setObjectName("counter");
    dravelin::perform(&counter, "step");     // no colon: no argument
    dravelin::perform(&counter, "add:", 40); // the overload that fits the argument best
    dravelin::perform(&counter, "add:", &counter);
    dravelin::perform(&counter, "step", 40); // an operation without arguments ignores the one given
    if (!dravelin::respondsTo(&counter, "reset:"))
        out << "not invokable: reset:\n";
    //! [perform]

    //! [method]
    const auto add = dravelin::methodForSelector(&counter, "add:", dravelin::CallArgument::IntegerKind);
    for (int i = 1; i <= 3; ++i)
        add(&counter, i);
    //! [method]

    //! [action]
    dravelin::Action<QObject *> action;
    {
        const auto mortal = std::make_shared<Counter>();
        action = {mortal.get(), "add:"}; // by name
        action(&counter);
        action = {mortal.get(), &Counter::reset}; // checked by the compiler
        action(&counter);
        action = {mortal.get(), [] { out << "callable\n"; }}; // as long as the target lives
        action(&counter);
    }
    if (!action(&counter))
        out << "its target is gone\n";
    //! [action]
}

#include "calls.moc"
