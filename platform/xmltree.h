// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/xml.h>

#include <libxml/tree.h>

#include <array>
#include <memory>

namespace dravelin::detail {

/// What keeps a tree of nodes alive: a document, or one removed or new node with all below it. Every tree has an xmlDoc
/// of its own, so that all nodes of a tree, and none besides, share its strings and its fate.
class XMLTree : public std::enable_shared_from_this<XMLTree>
{
public:
    /// Takes over the document. \param isDocument whether users see it, or only the node in it
    XMLTree(xmlDoc *doc, bool isDocument);
    ~XMLTree() { xmlFreeDoc(m_doc); }
    Q_DISABLE_COPY_MOVE(XMLTree)

    /// A tree of one node, which has no document yet. \return nothing for no node
    static std::shared_ptr<XMLNode> treeOf(xmlNode *node);

    /// The one object that stands for a node; nothing for no node, and for what users do not see.
    std::shared_ptr<XMLNode> handle(xmlNode *node);
    xmlNode *documentNode() const { return reinterpret_cast<xmlNode *>(m_doc); }
    bool isDocument() const { return m_isDocument; }

    static xmlNode *firstChild(const xmlNode *parent);
    /// The nearest node in a direction, `&xmlNode::next` or `&xmlNode::prev`, that is a child to the user.
    static xmlNode *neighbour(const xmlNode *node, xmlNode *xmlNode::*direction);

    qsizetype childCount(xmlNode *parent);
    xmlNode *childAt(xmlNode *parent, qsizetype index);
    /// Remembers where the child stands.
    void found(xmlNode *parent, qsizetype index, xmlNode *child);

    /// Puts the root of another tree, of which nothing remains, before a child or, with none, at the end.
    void insert(XMLNode &child, xmlNode *parent, xmlNode *before, qsizetype index);
    /// Makes the node a tree of its own.
    void remove(xmlNode *node);

private:
    /// A child of a parent and its index; the number of children, -1 while unknown.
    struct Cursor
    {
        xmlNode *parent = nullptr;
        xmlNode *child = nullptr;
        qsizetype index = 0;
        qsizetype count = -1;
    };

    Cursor *findCursor(const xmlNode *parent);
    Cursor &cursor(xmlNode *parent);
    void adopt(XMLTree &from, xmlNode *node);
    /// A child is going.
    void forget(const xmlNode *child);
    /// Nodes have gone to another tree.
    void forgetStrangers();

    xmlDoc *m_doc;
    bool m_isDocument;
    std::array<Cursor, 16> m_cursors; // the last one used comes first
};

/// Calls back for the node and all below it, in document order, without recursion.
template <typename Function>
void forEachNode(xmlNode *root, Function function)
{
    for (xmlNode *node = root; node;) {
        function(node);
        if (node->type == XML_ELEMENT_NODE && node->children) {
            node = node->children;
            continue;
        }
        while (node != root && !node->next)
            node = node->parent;
        node = node == root ? nullptr : node->next;
    }
}

} // namespace dravelin::detail
