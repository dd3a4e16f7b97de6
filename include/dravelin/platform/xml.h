// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QFlags>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

/// \file
/// XML documents as trees of nodes.
///
///     auto document = dravelin::XMLDocument::fromText(text);
///     if (!document)
///         return; // the log names the cause, with line and column
///     for (const auto &node : document->rootElement()->children()) {
///         if (auto page = node->asElement())
///             page->setAttribute("seen", "yes");
///     }
///     file.write(document->XMLData(dravelin::NSXMLNodePrettyPrint));
///
/// Nodes are shared: a node keeps the tree it stands in, a document included, and the same node is the same object for
/// as long as somebody holds it. A node that is removed becomes a tree of its own, with all that is below it and with
/// the namespace declarations it needs; it lives on while it or a node below it is held, and can be added elsewhere.
///
/// One thread at a time may use a tree and its nodes.
///
/// What a tree cannot hold and still be printed as XML is refused, with one line in the log, and leaves the tree as it
/// was: names that are none, and text with control characters other than tab, line feed and carriage return, with lone
/// surrogates, U+FFFE or U+FFFF; "--" in a comment or "-" at its end; "?>" in a processing instruction. Carriage returns
/// are read back as they are from text and attributes, but as line feeds from comments, CDATA sections and the like.
///
/// Names are qualified as they stand in the file, "svg:path". Declarations of namespaces are the attributes "xmlns" and
/// "xmlns:...", which come first.

struct _xmlNode; // libxml2's

namespace dravelin {

namespace detail {
class XMLTree;
}

class XMLDocument;
class XMLElement;

/// How documents are read and written. The values may be combined with `|`.
enum XMLOption : quint32 {
    /// Reading: makes the best of a document that is not well-formed: drops what cannot stand, repeated attributes for
    /// instance, and closes what is open. Such a document loses its document type; one that declares entities is
    /// refused.
    NSXMLDocumentTidyXML = 1U << 10,
    /// Writing: every element on a line of its own, indented by two spaces for each level down to 30 levels. Elements
    /// that have text stay as they are.
    NSXMLNodePrettyPrint = 1U << 17,
    /// Reading: keeps the white space between elements, which is dropped otherwise. Always kept is the white space in an
    /// element that begins with text or holds nothing else, and in what `xml:space="preserve"` covers.
    XMLPreserveWhitespace = 1U << 25,
};
Q_DECLARE_FLAGS(XMLOptions, XMLOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(XMLOptions)

/// A node of a tree: a document, an element, or text, a comment and the like, of which it is the only class.
class DRAVELIN_EXPORT XMLNode : public std::enable_shared_from_this<XMLNode>
{
    struct Key
    {
        explicit Key() = default;
    };

public:
    enum class Kind { Document, Element, Text, CData, Comment, ProcessingInstruction };

    /// \internal
    XMLNode(Key key, std::shared_ptr<detail::XMLTree> tree, _xmlNode *node);
    virtual ~XMLNode();
    Q_DISABLE_COPY_MOVE(XMLNode)

    /// \name New nodes, to be added somewhere
    /// Nothing when XML cannot hold the text.
    /// @{
    [[nodiscard]] static std::shared_ptr<XMLNode> createText(const QString &text);
    [[nodiscard]] static std::shared_ptr<XMLNode> createCData(const QString &text);
    [[nodiscard]] static std::shared_ptr<XMLNode> createComment(const QString &text);
    [[nodiscard]] static std::shared_ptr<XMLNode> createProcessingInstruction(const QString &target,
                                                                              const QString &content);
    /// @}

    [[nodiscard]] Kind kind() const noexcept;
    /// This node when it is an element, else nothing.
    [[nodiscard]] std::shared_ptr<XMLElement> asElement();

    /// The qualified name of an element, the target of a processing instruction; absent for all others.
    [[nodiscard]] QString name() const;

    /// The text of the node; for an element or a document all the text in it, without comments and processing
    /// instructions. Never absent.
    [[nodiscard]] QString stringValue() const;
    /// Absent text counts as empty. An element gets this text in place of its children; a document cannot.
    /// \return whether it was set
    bool setStringValue(const QString &text);

    /// \name Neighbours
    /// Nothing, where there is none. The document type is no child of its document.
    /// @{
    /// The element or document that the node stands in.
    [[nodiscard]] std::shared_ptr<XMLNode> parent() const;
    [[nodiscard]] std::shared_ptr<XMLNode> nextSibling() const;
    [[nodiscard]] std::shared_ptr<XMLNode> previousSibling() const;
    /// The document that the node stands in, or is; nothing for removed and for new nodes.
    [[nodiscard]] std::shared_ptr<XMLDocument> document() const;

    /// \cost walks in either direction cost the same for every child: the tree remembers where it has been in the
    /// last 16 nodes with many children, and how many these have; a first look is linear
    [[nodiscard]] qsizetype childCount() const;
    /// \cost as childCount()
    [[nodiscard]] std::shared_ptr<XMLNode> childAt(qsizetype index) const;
    /// The children as they are now, to iterate over whatever happens to them.
    [[nodiscard]] QList<std::shared_ptr<XMLNode>> children() const;
    /// The first child of that name at or behind an index; -1 when there is none. Case counts.
    [[nodiscard]] qsizetype indexOfChild(const QString &name, qsizetype from = 0) const;
    /// @}

    /// \name Changing the tree
    /// A node that is added leaves the place where it was, in whatever tree. Refused are: children of text and the
    /// like, a document as a child, a node inside itself, and in a document text and a second element.
    /// \cost linear in the size of what is moved
    /// @{
    /// Adds a last child. \return whether it was added
    bool addChild(const std::shared_ptr<XMLNode> &child);
    /// \param index where the child is to stand when it has left its old place, 0 to childCount()
    /// \return whether it was inserted
    bool insertChild(const std::shared_ptr<XMLNode> &child, qsizetype index);
    /// \return the removed child; nothing for an index outside
    std::shared_ptr<XMLNode> removeChild(qsizetype index);
    /// Removes the node from the element or document that it stands in.
    void detach();
    /// @}

    /// The node as XML in UTF-8; a document begins with an XML declaration and ends with a line feed.
    /// \param options NSXMLNodePrettyPrint; others have no effect
    [[nodiscard]] QByteArray XMLData(XMLOptions options = {}) const;

private:
    friend class detail::XMLTree;
    friend class XMLDocument;
    friend class XMLElement;

    std::shared_ptr<detail::XMLTree> m_tree;
    _xmlNode *m_node; // of the tree; points back here
};

/// An element: a node with a name, attributes and children.
class DRAVELIN_EXPORT XMLElement : public XMLNode
{
public:
    using XMLNode::XMLNode;

    /// \return nothing when the name is none
    [[nodiscard]] static std::shared_ptr<XMLElement> create(const QString &name);

    /// \return whether it was set
    bool setName(const QString &name);
    /// The namespace of the element's name by the declarations in scope; empty when there is none.
    [[nodiscard]] QString namespaceURI() const;

    /// In the order of the document, declarations of namespaces first.
    [[nodiscard]] QStringList attributeNames() const;
    /// Absent when there is no such attribute.
    [[nodiscard]] QString attribute(const QString &name) const;
    /// Sets the attribute, in its place, or adds it at the end. Absent text counts as empty.
    /// \return whether it was set
    bool setAttribute(const QString &name, const QString &value);
    /// \return whether it was there
    bool removeAttribute(const QString &name);
};

/// A document: at most one element, with comments and processing instructions around it.
///
/// Reading never opens a file or a connection: external entities and document types are not looked at, and a document
/// that refers to an entity which it does not declare itself is refused. Its own entities are expanded within libxml2's
/// bounds: not where few bytes grow to many. Documents that declare entities nest up to 256 levels, and each of their
/// texts has up to ten million bytes; for all others there is no limit but 2 GB in all.
class DRAVELIN_EXPORT XMLDocument : public XMLNode
{
public:
    using XMLNode::XMLNode;

    /// A document without a root element.
    [[nodiscard]] static std::shared_ptr<XMLDocument> create();
    /// Reads a document in the encoding that it declares; UTF-8 and UTF-16 need not be declared.
    /// \return nothing when there is no document in the bytes; the log names the cause with line and column
    /// \cost linear; a tree of many short texts takes ten times the size of the bytes, with XMLPreserveWhitespace sixteen
    [[nodiscard]] static std::shared_ptr<XMLDocument> fromData(const QByteArray &data, XMLOptions options = {});
    /// Reads a document from text, whatever encoding that declares. Text with lone surrogates or NULs is none.
    /// \return nothing, as for fromData()
    [[nodiscard]] static std::shared_ptr<XMLDocument> fromText(const QString &text, XMLOptions options = {});

    /// Nothing, when there is none.
    [[nodiscard]] std::shared_ptr<XMLElement> rootElement() const;
    /// Puts the element in the place of the root element, which is removed; nothing just removes it.
    /// \return whether it was set
    bool setRootElement(const std::shared_ptr<XMLElement> &element);
};

} // namespace dravelin
