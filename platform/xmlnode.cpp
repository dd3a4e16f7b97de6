// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xmltext.h"
#include "platform/xmltree.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace dravelin {

using namespace detail;

namespace {

QString qualifiedName(const xmlNode *node)
{
    const QString name = textOf(node->name);
    return node->ns && node->ns->prefix ? textOf(node->ns->prefix) + u':' + name : name;
}

/// Whether a node of that kind can have that content; logs if not.
bool canHold(const XMLNode &node, const QByteArray &content)
{
    switch (node.kind()) {
    case XMLNode::Kind::Document:
        logXML(u"a document has no text of its own"_s);
        return false;
    case XMLNode::Kind::Comment:
        return fitsComment(content);
    case XMLNode::Kind::ProcessingInstruction:
        return fitsProcessingInstruction({}, content);
    default:
        return true;
    }
}

} // namespace

XMLNode::XMLNode(Key, std::shared_ptr<XMLTree> tree, _xmlNode *node) : m_tree(std::move(tree)), m_node(node) {}

XMLNode::~XMLNode()
{
    if (m_node->_private == this)
        m_node->_private = nullptr;
}

std::shared_ptr<XMLNode> XMLNode::createText(const QString &text)
{
    const QByteArray bytes = xmlText(text, u"text"_s);
    return XMLTree::treeOf(bytes.isNull() ? nullptr : xmlNewText(xmlBytes(bytes)));
}

std::shared_ptr<XMLNode> XMLNode::createCData(const QString &text)
{
    const QByteArray bytes = xmlText(text, u"a CDATA section"_s);
    return XMLTree::treeOf(bytes.isNull() ? nullptr : xmlNewCDataBlock(nullptr, xmlBytes(bytes), int(bytes.size())));
}

std::shared_ptr<XMLNode> XMLNode::createComment(const QString &text)
{
    const QByteArray bytes = xmlText(text, u"a comment"_s);
    return XMLTree::treeOf(bytes.isNull() || !fitsComment(bytes) ? nullptr : xmlNewComment(xmlBytes(bytes)));
}

std::shared_ptr<XMLNode> XMLNode::createProcessingInstruction(const QString &target, const QString &content)
{
    const QByteArray name = xmlName(target, u"a processing instruction"_s);
    const QByteArray bytes = name.isNull() ? name : xmlText(content, u"a processing instruction"_s);
    if (bytes.isNull() || !fitsProcessingInstruction(name, bytes))
        return {};
    return XMLTree::treeOf(xmlNewPI(xmlBytes(name), xmlBytes(bytes)));
}

XMLNode::Kind XMLNode::kind() const noexcept
{
    switch (m_node->type) {
    case XML_DOCUMENT_NODE:
        return Kind::Document;
    case XML_ELEMENT_NODE:
        return Kind::Element;
    case XML_CDATA_SECTION_NODE:
        return Kind::CData;
    case XML_COMMENT_NODE:
        return Kind::Comment;
    case XML_PI_NODE:
        return Kind::ProcessingInstruction;
    default:
        return Kind::Text;
    }
}

std::shared_ptr<XMLElement> XMLNode::asElement()
{
    return kind() == Kind::Element ? std::static_pointer_cast<XMLElement>(shared_from_this()) : nullptr;
}

QString XMLNode::name() const
{
    const bool named = kind() == Kind::Element || kind() == Kind::ProcessingInstruction;
    return named ? qualifiedName(m_node) : QString();
}

QString XMLNode::stringValue() const
{
    const bool hasChildren = kind() == Kind::Element || kind() == Kind::Document;
    return hasChildren ? takeText(xmlNodeGetContent(m_node)) : textOf(m_node->content);
}

bool XMLNode::setStringValue(const QString &text)
{
    const QByteArray bytes = xmlText(text, u"text"_s);
    if (bytes.isNull() || !canHold(*this, bytes))
        return false;
    if (kind() != Kind::Element) {
        xmlNodeSetContent(m_node, xmlBytes(bytes));
        return true;
    }
    while (m_node->last)
        m_tree->remove(m_node->last);
    return bytes.isEmpty() || addChild(XMLTree::treeOf(xmlNewText(xmlBytes(bytes))));
}

std::shared_ptr<XMLNode> XMLNode::parent() const { return m_tree->handle(m_node->parent); }

std::shared_ptr<XMLNode> XMLNode::nextSibling() const
{
    return m_tree->handle(XMLTree::neighbour(m_node, &xmlNode::next));
}

std::shared_ptr<XMLNode> XMLNode::previousSibling() const
{
    return m_tree->handle(XMLTree::neighbour(m_node, &xmlNode::prev));
}

std::shared_ptr<XMLDocument> XMLNode::document() const
{
    return std::static_pointer_cast<XMLDocument>(m_tree->handle(m_tree->documentNode()));
}

} // namespace dravelin
