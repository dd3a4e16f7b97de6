// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/encoding.h>

#include <QtWidgets/QWidget>

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QTreeWidget;
class QTreeWidgetItem;

/// An XML document as a tree, and the chosen node as indented text.
class XmlPanel : public QWidget
{
    Q_OBJECT

public:
    XmlPanel();

    /// \return whether there is a document in the bytes
    bool show(const QString &name, const QByteArray &bytes);
    [[nodiscard]] std::shared_ptr<dravelin::XMLDocument> document() const { return m_document; }

    /// Opens the path of child numbers, from the root element on, and chooses where it ends.
    void choose(const QList<int> &path);

private:
    void openFile();
    /// Only what somebody looks at becomes items.
    void addChildren(QTreeWidgetItem *item);
    void showNode();

    std::shared_ptr<dravelin::XMLDocument> m_document;
    QCheckBox *m_tidy;
    QLabel *m_state;
    QTreeWidget *m_tree;
    QPlainTextEdit *m_text;
};
