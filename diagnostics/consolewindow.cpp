// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/consolewindow.h>

#include <dravelin/diagnostics/console.h>
#include <dravelin/platform/interfacefile.h>
#include <dravelin/platform/log.h>

#include "diagnostics/consolefeed.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QThread>
#include <QtGui/QClipboard>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtGui/QShortcut>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

QTextCharFormat makeAttributes()
{
    QFont font(QStringList{u"Monaco"_s, QFontDatabase::systemFont(QFontDatabase::FixedFont).family()}, 12);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    QTextCharFormat attributes;
    attributes.setFont(font);
    attributes.setForeground(Qt::black);
    return attributes;
}

/// Of the text with carriage returns, or of a view's selection with its separators.
QString withLineFeeds(QString text) { return text.replace(u'\r', u'\n').replace(QChar::ParagraphSeparator, u'\n'); }

} // namespace

class ConsoleWindowController::Private
{
public:
    explicit Private(ConsoleWindowController *owner, const QString &name) : q(owner), interfaceName(name)
    {
        controllers().append(this);
    }
    ~Private()
    {
        controllers().removeOne(this);
        dropWindow();
    }
    Q_DISABLE_COPY_MOVE(Private)

    void adoptWindow(std::unique_ptr<QWidget> loaded);
    void dropWindow();
    void putPartsToUse();
    void addFinding();
    void chooseFile();

    template <class Slot>
    void connectButton(const QString &name, Slot slot)
    {
        if (auto *button = window->findChild<QAbstractButton *>(name))
            connect(button, &QAbstractButton::clicked, q, slot);
    }

    ConsoleWindowController *q;
    QString interfaceName;
    QString text;
    std::unique_ptr<QWidget> window;
    std::unique_ptr<ConsoleFeed> feed;

private:
    /// Never destroyed: the console, in a global variable, goes last.
    static QList<Private *> &controllers()
    {
        static auto *list = new QList<Private *>;
        return *list;
    }
    static void dropAllWindows()
    {
        for (Private *controller : std::as_const(controllers()))
            controller->dropWindow();
    }
};

/// No widget may outlive the application; a console in a global variable does.
void ConsoleWindowController::Private::adoptWindow(std::unique_ptr<QWidget> loaded)
{
    window = std::move(loaded);
    qRemovePostRoutine(dropAllWindows);
    qAddPostRoutine(dropAllWindows);
}

void ConsoleWindowController::Private::dropWindow()
{
    if (!window)
        return;
    window->close();
    if (QThread::currentThread()->loopLevel() > 0)
        window.release()->deleteLater(); // one of its own buttons may have led here
    else
        window.reset();
}

void ConsoleWindowController::Private::putPartsToUse()
{
    window->setAttribute(Qt::WA_DeleteOnClose, false);
    window->setAttribute(Qt::WA_QuitOnClose, false);
    if (auto *view = window->findChild<QPlainTextEdit *>(u"textDisplay"_s))
        q->setTextDisplay(view);
    connectButton(u"clearButton"_s, [this] { q->clearButtonAction(); });
    connectButton(u"copyButton"_s, [this] { q->copy(); });
    connectButton(u"saveButton"_s, [this] { chooseFile(); });
    addFinding();
}

void ConsoleWindowController::Private::addFinding()
{
    auto *field = window->findChild<QLineEdit *>(u"findField"_s);
    if (!field)
        return;
    const auto findNext = [this, field] { q->find(field->text()); };
    connectButton(u"findNextButton"_s, findNext);
    connectButton(u"findPreviousButton"_s, [this, field] { q->find(field->text(), true); });
    connect(field, &QLineEdit::returnPressed, q, findNext);
    auto *shortcut = new QShortcut(QKeySequence::Find, window.get());
    connect(shortcut, &QShortcut::activated, field, [field] {
        field->setFocus(Qt::ShortcutFocusReason);
        field->selectAll();
    });
}

void ConsoleWindowController::Private::chooseFile()
{
    auto *dialog = new QFileDialog(window.get());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->selectFile(u"console.txt"_s);
    connect(dialog, &QFileDialog::fileSelected, q, &ConsoleWindowController::saveText);
    dialog->open();
}

ConsoleWindowController::ConsoleWindowController(const QString &interfaceName)
    : d(std::make_unique<Private>(this, interfaceName))
{}

ConsoleWindowController::~ConsoleWindowController() = default;

QWidget *ConsoleWindowController::window()
{
    if (!d->window) {
        if (auto loaded = loadInterfaceFile(d->interfaceName)) {
            d->adoptWindow(std::move(loaded));
            windowDidLoad();
        }
    }
    return d->window.get();
}

void ConsoleWindowController::windowDidLoad() { d->putPartsToUse(); }

QPlainTextEdit *ConsoleWindowController::textDisplay() const { return d->feed ? d->feed->view() : nullptr; }

void ConsoleWindowController::setTextDisplay(QPlainTextEdit *view)
{
    if (view == textDisplay())
        return;
    d->feed = view ? std::make_unique<ConsoleFeed>(view, makeAttributes(), d->text) : nullptr;
    Q_EMIT textDisplayChanged();
}

QString ConsoleWindowController::text() const { return d->text; }
qsizetype ConsoleWindowController::length() const noexcept { return d->text.size(); }

void ConsoleWindowController::appendText(const QString &text)
{
    d->text.append(text);
    if (d->feed)
        d->feed->wake();
    Q_EMIT textAppended(text);
}

void ConsoleWindowController::clear()
{
    d->text = QString();
    if (d->feed)
        d->feed->restart();
    Q_EMIT textCleared();
}

bool ConsoleWindowController::find(const QString &text, bool backward)
{
    QPlainTextEdit *view = textDisplay();
    if (!view || text.isEmpty())
        return false;
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (view->find(text, flags))
        return true;
    QTextCursor found(view->document());
    found.movePosition(backward ? QTextCursor::End : QTextCursor::Start);
    found = view->document()->find(text, found, flags);
    if (!found.isNull())
        view->setTextCursor(found);
    return !found.isNull();
}

void ConsoleWindowController::copy() const
{
    const QPlainTextEdit *view = textDisplay();
    const QString selected = view ? view->textCursor().selectedText() : QString();
    if (qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        QGuiApplication::clipboard()->setText(withLineFeeds(selected.isEmpty() ? d->text : selected));
}

bool ConsoleWindowController::saveText(const QString &path) const
{
    if (const QFileInfo present(path); present.exists() && !present.isFile()) {
        logWarning(u"Console not saved to %1: it is not a file that could be replaced"_s.arg(path));
        return false;
    }
    QSaveFile file(path);
    const QByteArray bytes = withLineFeeds(d->text).toUtf8();
    // commit() by itself reports success on a full disk.
    const bool saved =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() && file.commit();
    if (!saved)
        logWarning(u"Console not saved to %1: %2"_s.arg(path, file.errorString()));
    return saved;
}

void ConsoleWindowController::showWindow(QObject *)
{
    QWidget *shown = window();
    if (!shown)
        return;
    shown->setWindowState(shown->windowState() & ~Qt::WindowMinimized);
    shown->show();
    shown->raise();
}

void ConsoleWindowController::close()
{
    if (d->window)
        d->window->close();
}

void ConsoleWindowController::clearButtonAction(QObject *) { clearConsole(); }

} // namespace dravelin
