// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

QT_BEGIN_NAMESPACE
class QPageLayout;
class QPainter;
class QRect;
QT_END_NAMESPACE

/// \file
/// The display environment in words: windows, screens, page layouts; and a widget that shows where it is. Every line
/// ends with a carriage return. From the main thread.
///
///     dravelin::console(dravelin::dumpScreens());             // "Screen 0: {{0, 0}, {1440, 900}}\r"
///     dravelin::console(dravelin::dump(printer.pageLayout()));

namespace dravelin {

/// Of screens and what is on them. DisplayService tells about both, and can be replaced in tests.
inline namespace Debug {

/// The windows on the screen, of all applications, those in front first: the owner's name, the title and the bounds,
/// frame included, with y downwards, as in "konsole - Shell: {{10, 20}, {640, 480}}". What is missing reads "(null)".
/// Empty where the windows of other applications cannot be seen, as without an X server.
/// \operation{dumpWindowList}
[[nodiscard]] DRAVELIN_EXPORT QString dumpWindowList();

/// The screens, numbered from 0, the primary one first: each one's frame, with y upwards from the lower edge of the
/// primary screen.
/// \operation{dumpScreens}
[[nodiscard]] DRAVELIN_EXPORT QString dumpScreens();

} // namespace Debug

inline namespace Utilities {

/// Three lines: a heading, the name of the paper ("A4", "Letter"; "(null)" when there is none) and the width and height
/// in inches, as the paper is turned, with two decimals: "  Paper Size: 8.50, 11.00".
/// \operation{dump}
[[nodiscard]] DRAVELIN_EXPORT QString dump(const QPageLayout &layout);

} // namespace Utilities

/// A widget that marks its bounds in green and its origin in red: derive from it, or lay it over others, to see where
/// views really are.
///
///     auto *overlay = new dravelin::DebugView(canvas);
///     overlay->setAttribute(Qt::WA_TransparentForMouseEvents);
///     overlay->setGeometry(canvas->rect());
class DRAVELIN_EXPORT DebugView : public QWidget
{
    Q_OBJECT

public:
    explicit DebugView(QWidget *parent = nullptr);
    ~DebugView() override;

    /// Draws the markers: a filled red square of 10 by 10 centred on the origin, of which the widget itself shows the
    /// quarter that lies inside, then the green outline of rect().
    /// \param painter in the widget's coordinates; its state is kept
    /// \param rect the part to be drawn anew; all is drawn
    /// \operation{drawRect:}
    virtual void drawRect(QPainter &painter, const QRect &rect);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace dravelin
