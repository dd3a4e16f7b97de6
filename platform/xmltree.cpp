// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xmltree.h"

#include <algorithm>
#include <utility>

namespace dravelin::detail {

namespace {

// libxml2's own functions would merge neighbouring texts and free one of them.
void link(xmlNode *node, xmlNode *parent, xmlNode *before)
{
    node->parent = parent;
    node->next = before;
    node->prev = before ? before->prev : parent->last;
    (node->prev ? node->prev->next : parent->children) = node;
    (before ? before->prev : parent->last) = node;
}

using WrapContext = std::unique_ptr<xmlDOMWrapCtxt, decltype(&xmlDOMWrapFreeCtxt)>;

} // namespace

XMLTree::XMLTree(xmlDoc *doc, bool isDocument) : m_doc(doc), m_isDocument(isDocument)
{
    // Printing writes what the encoding named here lacks as references.
    xmlFree(const_cast<xmlChar *>(doc->encoding));
    doc->encoding = xmlStrdup(reinterpret_cast<const xmlChar *>("UTF-8"));
}

std::shared_ptr<XMLNode> XMLTree::treeOf(xmlNode *node)
{
    if (!node)
        return {};
    auto tree = std::make_shared<XMLTree>(xmlNewDoc(nullptr), false);
    node->doc = tree->m_doc;
    link(node, tree->documentNode(), nullptr);
    return tree->handle(node);
}

std::shared_ptr<XMLNode> XMLTree::handle(xmlNode *node)
{
    if (!node || (node == documentNode() && !m_isDocument))
        return {};
    if (auto *known = static_cast<XMLNode *>(node->_private)) {
        if (auto shared = known->weak_from_this().lock())
            return shared;
    }
    std::shared_ptr<XMLNode> made;
    if (node->type == XML_ELEMENT_NODE)
        made = std::make_shared<XMLElement>(XMLNode::Key(), shared_from_this(), node);
    else if (node == documentNode())
        made = std::make_shared<XMLDocument>(XMLNode::Key(), shared_from_this(), node);
    else
        made = std::make_shared<XMLNode>(XMLNode::Key(), shared_from_this(), node);
    node->_private = made.get();
    return made;
}

void XMLTree::insert(XMLNode &child, xmlNode *parent, xmlNode *before, qsizetype index)
{
    const std::shared_ptr<XMLTree> from = child.m_tree; // until its node has left
    xmlNode *node = child.m_node;
    xmlUnlinkNode(node);
    adopt(*from, node);
    link(node, parent, before);
    if (Cursor *known = findCursor(parent)) {
        known->count += known->count >= 0;
        known->index += known->child && index <= known->index;
    }
}

void XMLTree::remove(xmlNode *node)
{
    forget(node);
    const auto own = std::make_shared<XMLTree>(xmlNewDoc(nullptr), false);
    xmlUnlinkNode(node);
    own->adopt(*this, node);
    link(node, own->documentNode(), nullptr);
    forgetStrangers();
}

void XMLTree::adopt(XMLTree &from, xmlNode *node)
{
    const WrapContext context(xmlDOMWrapNewCtxt(), xmlDOMWrapFreeCtxt);
    // The first call declares at the node what its new place may not: the namespaces in use.
    xmlDOMWrapReconcileNamespaces(context.get(), node, 0);
    xmlDOMWrapAdoptNode(context.get(), from.m_doc, node, m_doc, nullptr, 0);
    const auto self = shared_from_this();
    forEachNode(node, [&self](xmlNode *inner) {
        if (inner->_private)
            static_cast<XMLNode *>(inner->_private)->m_tree = self;
    });
}

xmlNode *XMLTree::neighbour(const xmlNode *node, xmlNode *xmlNode::*direction)
{
    xmlNode *result = node->*direction;
    return result && result->type == XML_DTD_NODE ? result->*direction : result;
}

xmlNode *XMLTree::firstChild(const xmlNode *parent)
{
    xmlNode *first = parent->children;
    return first && first->type == XML_DTD_NODE ? first->next : first;
}

} // namespace dravelin::detail
