// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "window.h"

#include "control/controlpage.h"
#include "diagnostics/diagnosticspage.h"
#include "encoding/encodingpage.h"
#include "files/filespage.h"
#include "keyboard/keyboardpage.h"
#include "overlay/overlaypage.h"
#include "photo/photopage.h"
#include "preferences/preferencespage.h"
#include "screens/screenspage.h"
#include "sound/soundpage.h"
#include "stack/stackpage.h"
#include "system/systempage.h"
#include "table/tablepage.h"
#include "undo/undopage.h"

#include <dravelin/version.h>

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QStackedWidget>

using namespace Qt::StringLiterals;

Window::Window() : m_list(new QListWidget), m_stack(new QStackedWidget)
{
    setWindowTitle(u"Dravelin %1 gallery"_s.arg(QLatin1String(DRAVELIN_VERSION)));
    auto *content = new QWidget;
    auto *layout = new QHBoxLayout(content);
    m_list->setFixedWidth(150);
    m_list->setAccessibleName(u"Pages"_s);
    layout->addWidget(m_list);
    layout->addWidget(m_stack, 1);
    setCentralWidget(content);
    connect(m_list, &QListWidget::currentRowChanged, m_stack, &QStackedWidget::setCurrentIndex);

    add(new PreferencesPage);
    add(new ControlPage);
    add(new UndoPage);
    add(new EncodingPage);
    add(new PhotoPage);
    add(new OverlayPage);
    add(new SoundPage);
    add(new TablePage);
    add(new StackPage);
    add(new ScreensPage);
    add(new KeyboardPage);
    add(new FilesPage);
    add(new SystemPage);
    add(new DiagnosticsPage);
    show(m_pages.constFirst());
    resize(1120, 680);
}

void Window::add(Page *page)
{
    m_pages << page;
    m_list->addItem(page->title());
    m_stack->addWidget(page);
}

void Window::show(Page *page) { m_list->setCurrentRow(int(m_pages.indexOf(page))); }
