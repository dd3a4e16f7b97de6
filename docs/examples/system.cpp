// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>

static QTextStream out(stdout);

class Document : public dravelin::Object
{
    Q_OBJECT

public:
    Q_INVOKABLE void save() { out << "saved\n"; }
    Q_INVOKABLE void setTitle(const QString &title) { out << "title " << title << '\n'; }
};

//! [archived]
class Note : public dravelin::Coding
{
public:
    void encodeWithCoder(dravelin::KeyedArchiver &coder) const override { coder.encodeObject(text, "text"); }
    bool initWithCoder(dravelin::KeyedUnarchiver &coder) override
    {
        text = coder.decodeObjectForKey<QString>("text");
        return !text.isNull();
    }
    QString text;
};
//! [archived]

static void runCommands()
{
    //! [run]
    const QString both = dravelin::runShellCommand("echo one; echo two >&2; exit 3");
    out << both; // both streams, in the order of writing
    const QString none = dravelin::runShellCommand("true");
    out << (none.isEmpty() && !none.isNull() ? "nothing was written\n" : "?\n");
    const QString bad = dravelin::runShellCommand("printf '\\377'");
    out << (bad.isNull() ? "not text\n" : "?\n"); // and a line in the log
    //! [run]
}

static void runBeside()
{
    //! [beside]
    dravelin::ShellCommand command;
    command.setTimeLimit(60); // seconds
    command.setInput("pears\napples\n");
    QObject::connect(&command, &dravelin::ShellCommand::outputRead, [](const QString &text) { out << text; });
    QObject::connect(&command, &dravelin::ShellCommand::finished, [&command](int status, int signal) {
        out << "status " << status << ", signal " << signal << ", "
            << (command.ending() == dravelin::ShellCommand::Exited ? "by itself" : "ended") << '\n';
        QCoreApplication::quit();
    });
    command.start("sort; exit 4");
    QCoreApplication::exec();
    //! [beside]
    //! [cancel]
    command.start("sleep 1000");
    command.cancel(); // takes effect at once; finished() follows
    QCoreApplication::exec();
    //! [cancel]
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    runCommands();
    runBeside();

    //! [version]
    QCoreApplication::setApplicationVersion("2.1");
    out << dravelin::versionNumber(true) << '\n';
    dravelin::Bundle::mainBundle().setObject("57", "CFBundleVersion");
    out << dravelin::versionNumber(true) << ", " << dravelin::versionNumber(false) << '\n';
    //! [version]

    Document document;
    Document *target = &document;
    //! [calls]
    dravelin::callAction(target, "save");          // by name, as from a settings file
    dravelin::callAction(target, &Document::save); // checked by the compiler
    dravelin::callActionWithId(target, "setTitle:", QString("Plan"));
    dravelin::callAction(nullptr, "save"); // nothing
    //! [calls]

    //! [data]
    dravelin::registerCodingClass<Note>("Note");
    auto note = std::make_shared<Note>();
    note->text = "remember the milk";
    const QByteArray data = dravelin::encodeObjectData(note);
    const auto copy = dravelin::decodeObjectData<Note>(data);
    out << copy->text << '\n';
    out << dravelin::decodeObjectData<int>(dravelin::encodeObjectData(42)) << '\n';
    //! [data]

    //! [identity]
    out << dravelin::DravelinVersionNumber << ' ' << dravelin::DravelinVersionString;
    //! [identity]
}

#include "system.moc"
