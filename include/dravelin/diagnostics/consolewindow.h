// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/object.h>

#include <QtCore/QString>

#include <memory>

QT_BEGIN_NAMESPACE
class QPlainTextEdit;
class QWidget;
QT_END_NAMESPACE

namespace dravelin {

/// The console's text and its window, which is loaded from an interface file. Applications print with console() and
/// rarely need this class: to look at the text, to search or save it, or to show it in a view of their own.
///
///     if (auto *controller = dravelin::currentConsole())
///         controller->saveText("console.txt");
///
/// The window comes from the interface file "ConsoleWindow.ui": the application's own one, found as
/// Bundle::pathForResource() does, or else the one that is built in. What it names is put to use, and what it lacks is
/// not missed: `textDisplay` (QPlainTextEdit), `clearButton`, `copyButton`, `saveButton`, `findNextButton`,
/// `findPreviousButton` (buttons) and `findField` (QLineEdit).
///
/// The view follows the text a little later, in small portions from the event loop, so that printing stays fast and the
/// interface responsive. It scrolls to the end unless the reader has scrolled up. Of a line of more than 10,000
/// characters it shows the beginning, and of an embedded NUL the sign for it; text() has everything.
class DRAVELIN_EXPORT ConsoleWindowController : public Object
{
    Q_OBJECT
    Q_MOC_INCLUDE("QtWidgets/QPlainTextEdit")
    Q_PROPERTY(QPlainTextEdit *textDisplay READ textDisplay WRITE setTextDisplay NOTIFY textDisplayChanged)

public:
    /// \param interfaceName of the interface file, without ".ui"; nothing is loaded yet
    /// \operation{initWithWindowNibName:}
    explicit ConsoleWindowController(const QString &interfaceName = QStringLiteral("ConsoleWindow"));
    /// Destroys the window.
    ~ConsoleWindowController() override;

    /// The window, loaded at the first call. It belongs to the controller.
    /// \return null without a QApplication or a usable interface file; the log says why
    /// \operation{window}
    QWidget *window();

    /// The view that shows the text; null before the window is loaded.
    /// \operation{textDisplay}
    [[nodiscard]] QPlainTextEdit *textDisplay() const;
    /// Makes another view show the text. The view is held weakly, and what it contained is replaced.
    /// \operation{setTextDisplay:}
    void setTextDisplay(QPlainTextEdit *view);

    /// All text so far; lines end with a carriage return.
    [[nodiscard]] QString text() const;
    /// How many characters text() has.
    [[nodiscard]] qsizetype length() const noexcept;

    /// Appends to the text, without a line end.
    /// \operation{appendText:}
    Q_INVOKABLE void appendText(const QString &text);
    /// Forgets the text.
    void clear();

    /// Selects the next (or previous) place in the view where `text` occurs, in either case, from the other end on when
    /// there is none further on.
    /// \return whether there is one
    bool find(const QString &text, bool backward = false);

    /// Puts the view's selection into the clipboard, or all text when nothing is selected.
    void copy() const;

    /// Writes all text to a file, in UTF-8 and with line feeds as line ends.
    /// \return false when it could not be written; an existing file then stays, and the log names the cause
    bool saveText(const QString &path) const;

public Q_SLOTS:
    /// Shows the window, in front of the others.
    /// \param sender not looked at
    /// \operation{showWindow:}
    void showWindow(QObject *sender = nullptr);
    /// Hides the window; it keeps the text.
    /// \operation{close}
    void close();
    /// What the window's clear button does: clearConsole().
    /// \operation{clearButtonAction:}
    void clearButtonAction(QObject *sender = nullptr);

Q_SIGNALS:
    void textDisplayChanged();
    void textAppended(const QString &text);
    void textCleared();

protected:
    /// Called when the window has been loaded: chooses the font and puts the window's parts to use.
    /// \operation{windowDidLoad}
    virtual void windowDidLoad();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace dravelin
