// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QList>
#include <QtWidgets/QMainWindow>

class Page;
class QListWidget;
class QStackedWidget;

/// The gallery: the list of pages at the left, the chosen one beside it.
class Window : public QMainWindow
{
    Q_OBJECT

public:
    Window();

    [[nodiscard]] QList<Page *> pages() const { return m_pages; }
    void show(Page *page);

private:
    void add(Page *page);

    QListWidget *m_list;
    QStackedWidget *m_stack;
    QList<Page *> m_pages;
};
