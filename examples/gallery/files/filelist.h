// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QUrl>
#include <QtWidgets/QTreeWidget>

/// A list of files to which files can be dragged.
class FileList : public QTreeWidget
{
    Q_OBJECT

public:
    explicit FileList(QWidget *parent = nullptr);

    /// The texts of all rows, one line each.
    [[nodiscard]] QString text() const;

Q_SIGNALS:
    void filesDropped(const QList<QUrl> &urls);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
};
