// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/dumps.h>

#include <dravelin/platform/display.h>
#include <dravelin/values/conversions.h>

#include <QtGui/QPageLayout>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

QString orNull(const QString &text) { return text.isNull() ? u"(null)"_s : text; }

QString textOf(const QRect &rect)
{
    return u"{{%1, %2}, {%3, %4}}"_s.arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

/// With y upwards from the lower edge of the primary screen.
QRect frame(const QRect &screen, const QRect &primary)
{
    return {screen.x(), primary.bottom() - screen.bottom(), screen.width(), screen.height()};
}

QString inches(qreal points) { return doubleToStr(points / 72.0, 2); }

} // namespace

QString Debug::dumpWindowList()
{
    QString dump;
    const QList<WindowInfo> windows = DisplayService::current()->windowList();
    for (const WindowInfo &window : windows)
        dump += u"%1 - %2: %3\r"_s.arg(orNull(window.ownerName), orNull(window.name), textOf(window.bounds));
    return dump;
}

QString Debug::dumpScreens()
{
    QString dump;
    const QList<QRect> screens = DisplayService::current()->screens();
    for (qsizetype i = 0; i < screens.size(); ++i)
        dump += u"Screen %1: %2\r"_s.arg(i).arg(textOf(frame(screens[i], screens.constFirst())));
    return dump;
}

QString Utilities::dump(const QPageLayout &layout)
{
    const QSizeF size = layout.fullRect(QPageLayout::Point).size();
    const QString name = layout.isValid() ? layout.pageSize().key() : QString();
    return u"NSPrintInfo:\r  Paper Name: %1\r  Paper Size: %2, %3\r"_s.arg(orNull(name), inches(size.width()),
                                                                           inches(size.height()));
}

} // namespace dravelin
