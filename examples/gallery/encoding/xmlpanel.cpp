// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "encoding/xmlpanel.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace dravelin;

namespace {

using NodePointer = std::shared_ptr<XMLNode>;

constexpr int mostChildren = 2000;
constexpr qsizetype mostText = 20'000;

NodePointer nodeOf(const QTreeWidgetItem *item) { return item->data(0, Qt::UserRole).value<NodePointer>(); }

QString attributesText(const XMLElement &element)
{
    QStringList texts;
    const QStringList names = element.attributeNames();
    for (const QString &name : names)
        texts << name + u"=\""_s + element.attribute(name) + u'"';
    return texts.join(u' ');
}

QTreeWidgetItem *makeItem(const NodePointer &node)
{
    const auto element = node->asElement();
    auto *item = new QTreeWidgetItem({element ? node->name() : u"text"_s,
                                      element ? attributesText(*element) : node->stringValue().simplified().left(200)});
    item->setData(0, Qt::UserRole, QVariant::fromValue(node));
    if (element && node->childCount() > 0)
        item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    return item;
}

} // namespace

XmlPanel::XmlPanel()
{
    auto *layout = new QVBoxLayout(this);
    auto *bar = new QHBoxLayout;
    auto *open = new QPushButton(tr("O&pen a Document…"));
    connect(open, &QPushButton::clicked, this, &XmlPanel::openFile);
    m_tidy = new QCheckBox(tr("&Repair what is not well-formed"));
    m_state = new QLabel(tr("No document"));
    bar->addWidget(open);
    bar->addWidget(m_tidy);
    bar->addWidget(m_state, 1);
    layout->addLayout(bar);
    auto *splitter = new QSplitter;
    layout->addWidget(splitter, 1);
    m_tree = new QTreeWidget;
    m_tree->setHeaderLabels({tr("Node"), tr("Attributes or text")});
    m_tree->header()->resizeSection(0, 200);
    m_tree->setUniformRowHeights(true);
    m_tree->setAccessibleName(tr("Nodes"));
    m_text = new QPlainTextEdit;
    m_text->setReadOnly(true);
    m_text->setAccessibleName(tr("Chosen node"));
    splitter->addWidget(m_tree);
    splitter->addWidget(m_text);
    connect(m_tree, &QTreeWidget::itemExpanded, this, &XmlPanel::addChildren);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &XmlPanel::showNode);
}

void XmlPanel::openFile()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open a Document"), u"/usr/share/mime/packages"_s,
                                                      tr("XML (*.xml *.svg *.ui);;All files (*)"));
    QFile file(path);
    if (!path.isEmpty() && file.open(QIODevice::ReadOnly))
        show(QFileInfo(path).fileName(), file.readAll());
}

bool XmlPanel::show(const QString &name, const QByteArray &bytes)
{
    QElapsedTimer timer;
    timer.start();
    m_document = XMLDocument::fromData(bytes, m_tidy->isChecked() ? NSXMLDocumentTidyXML : XMLOptions());
    const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
    m_tree->clear();
    m_text->clear();
    m_state->setText(m_document
                         ? tr("%1, %2 bytes, read in %3 ms").arg(name).arg(bytes.size()).arg(milliseconds, 0, 'f', 1)
                         : tr("%1 is not well-formed").arg(name));
    if (m_document) {
        QTreeWidgetItem *root = makeItem(m_document->rootElement());
        m_tree->addTopLevelItem(root);
        root->setExpanded(true);
        m_tree->setCurrentItem(root);
    }
    return m_document != nullptr;
}

void XmlPanel::addChildren(QTreeWidgetItem *item)
{
    if (item->childCount() > 0)
        return;
    const NodePointer parent = nodeOf(item);
    NodePointer child = getXMLElement(parent, 0);
    for (int i = 0; child && i < mostChildren; ++i, child = child->nextSibling())
        item->addChild(makeItem(child));
    if (child)
        item->addChild(makeItem(XMLNode::createText(tr("… %1 more").arg(parent->childCount() - mostChildren))));
}

void XmlPanel::choose(const QList<int> &path)
{
    QTreeWidgetItem *item = m_tree->topLevelItem(0);
    for (const int number : path) {
        item->setExpanded(true);
        item = item->child(number);
    }
    item->setExpanded(true);
    m_tree->setCurrentItem(item);
}

void XmlPanel::showNode()
{
    const QTreeWidgetItem *item = m_tree->currentItem();
    const QString text = item ? QString::fromUtf8(nodeOf(item)->XMLData(NSXMLNodePrettyPrint)) : QString();
    m_text->setPlainText(text.size() > mostText ? text.left(mostText) + u"\n…"_s : text);
}
