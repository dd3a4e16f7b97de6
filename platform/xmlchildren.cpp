// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xmltext.h"
#include "platform/xmltree.h"

using namespace Qt::StringLiterals;

namespace dravelin {

using namespace detail;

namespace {

bool hasName(const xmlNode *node, const QByteArray &name)
{
    if (node->type == XML_ELEMENT_NODE && node->ns && node->ns->prefix)
        return xmlStrQEqual(node->ns->prefix, node->name, xmlBytes(name));
    return (node->type == XML_ELEMENT_NODE || node->type == XML_PI_NODE) && xmlStrEqual(node->name, xmlBytes(name));
}

bool isWithin(const xmlNode *node, const xmlNode *outer)
{
    while (node && node != outer)
        node = node->parent;
    return node;
}

bool hasOtherElement(const xmlNode *document, const xmlNode *child)
{
    const xmlNode *node = document->children;
    while (node && (node->type != XML_ELEMENT_NODE || node == child))
        node = node->next;
    return node;
}

/// Why the document cannot have the child; nothing if it can.
const char *faultInDocument(const xmlNode *document, const xmlNode *child)
{
    if (child->type == XML_ELEMENT_NODE)
        return hasOtherElement(document, child) ? "a document has one root element" : nullptr;
    return child->type == XML_COMMENT_NODE || child->type == XML_PI_NODE ? nullptr
                                                                         : "a document has no text of its own";
}

const char *faultOfChild(const xmlNode *parent, const xmlNode *child)
{
    if (!child)
        return "there is no child to add";
    if (child->type == XML_DOCUMENT_NODE)
        return "a document cannot be a child";
    if (parent->type == XML_DOCUMENT_NODE)
        return faultInDocument(parent, child);
    if (parent->type != XML_ELEMENT_NODE)
        return "only elements and documents have children";
    // What has no children cannot be around anything: long rows of new elements cost nothing here.
    return child->children && isWithin(parent, child) ? "an element cannot stand in itself" : nullptr;
}

bool canAdd(const xmlNode *parent, const xmlNode *child)
{
    const char *fault = child == parent ? "an element cannot stand in itself" : faultOfChild(parent, child);
    if (fault)
        logXML(QLatin1String(fault));
    return !fault;
}

} // namespace

qsizetype XMLNode::childCount() const { return m_tree->childCount(m_node); }

std::shared_ptr<XMLNode> XMLNode::childAt(qsizetype index) const
{
    return m_tree->handle(m_tree->childAt(m_node, index));
}

QList<std::shared_ptr<XMLNode>> XMLNode::children() const
{
    QList<std::shared_ptr<XMLNode>> result;
    for (xmlNode *child = XMLTree::firstChild(m_node); child; child = XMLTree::neighbour(child, &xmlNode::next))
        result.append(m_tree->handle(child));
    return result;
}

qsizetype XMLNode::indexOfChild(const QString &name, qsizetype from) const
{
    const QByteArray wanted = name.toUtf8();
    qsizetype index = qMax<qsizetype>(from, 0);
    xmlNode *child = m_tree->childAt(m_node, index);
    while (child && !hasName(child, wanted)) {
        child = XMLTree::neighbour(child, &xmlNode::next);
        ++index;
    }
    if (!child)
        return -1;
    m_tree->found(m_node, index, child);
    return index;
}

bool XMLNode::addChild(const std::shared_ptr<XMLNode> &child)
{
    if (!canAdd(m_node, child ? child->m_node : nullptr))
        return false;
    child->detach();
    m_tree->insert(*child, m_node, nullptr, std::numeric_limits<qsizetype>::max());
    return true;
}

bool XMLNode::insertChild(const std::shared_ptr<XMLNode> &child, qsizetype index)
{
    if (!canAdd(m_node, child ? child->m_node : nullptr))
        return false;
    const qsizetype count = childCount() - (child->m_node->parent == m_node);
    if (index < 0 || index > count) {
        logXML(u"there is no place %1 among %2 children"_s.arg(index).arg(count));
        return false;
    }
    child->detach();
    m_tree->insert(*child, m_node, m_tree->childAt(m_node, index), index);
    return true;
}

std::shared_ptr<XMLNode> XMLNode::removeChild(qsizetype index)
{
    auto child = childAt(index);
    if (child)
        child->detach();
    return child;
}

void XMLNode::detach()
{
    if (const auto tree = m_tree; parent())
        tree->remove(m_node);
}

} // namespace dravelin
