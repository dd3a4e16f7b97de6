// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "files/filelist.h"

#include <QtCore/QMimeData>
#include <QtGui/QDropEvent>
#include <QtWidgets/QHeaderView>

using namespace Qt::StringLiterals;

FileList::FileList(QWidget *parent) : QTreeWidget(parent)
{
    setHeaderLabels({tr("File"), tr("How it was found"), tr("Size"), tr("Access"), tr("Folder")});
    setRootIsDecorated(false);
    setAcceptDrops(true);
    setAccessibleName(tr("Chosen files"));
    setSelectionMode(ExtendedSelection);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

QString FileList::text() const
{
    QString text;
    for (int i = 0; i < topLevelItemCount(); ++i) {
        QStringList cells;
        for (int column = 0; column < 4; ++column)
            cells << topLevelItem(i)->text(column);
        text += cells.join(u" | "_s) + u'\n';
    }
    return text;
}

void FileList::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void FileList::dragMoveEvent(QDragMoveEvent *event) { event->acceptProposedAction(); }

void FileList::dropEvent(QDropEvent *event)
{
    event->setDropAction(Qt::CopyAction); // whoever drags must not take the files away
    event->accept();
    Q_EMIT filesDropped(event->mimeData()->urls());
}
