// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/xml.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <memory>

/// \file
/// Short functions over XML documents, and documents as compressed Base64 text.
///
///     auto document = dravelin::createEmptyXMLDocument();
///     auto page = dravelin::addXMLElement(document->rootElement(), "page");
///     dravelin::addXMLAttribute(page, "number", "1");
///
///     const QString packed = dravelin::encodeXMLData(document->XMLData());
///     auto copy = dravelin::createXmlFromEncodedData(packed);
///     qsizetype position = 0;
///     while (auto node = dravelin::findXmlNode(copy->rootElement(), position, "page"))
///         qInfo() << dravelin::getXMLAttribute(node, "number");       // "1"
///
/// Absent nodes may be handed in wherever a node is taken. A document that does not parse is one line in the log, with
/// cause, line and column.

namespace dravelin {

/// \name Documents
/// @{

/// A document whose root element is named "root".
/// \operation{createEmptyXMLDocument}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<XMLDocument> createEmptyXMLDocument();

/// Reads a document by XMLDocument::fromText(): white space between elements is dropped.
/// \return nothing when the text is not well-formed or absent
/// \operation{createXmlWithData}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<XMLDocument> createXmlWithData(const QString &text);

/// The same as createXmlWithData().
/// \operation{parseXMLDocument}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<XMLDocument> parseXMLDocument(const QString &text);

/// The document that encodeXMLData() has made text of.
/// \return nothing when the text is not Base64, its bytes are no zlib stream, or what that holds is not well-formed
/// \operation{createXmlFromEncodedData}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<XMLDocument> createXmlFromEncodedData(const QString &text);

/// The bytes that encodeXMLData() has made text of.
/// \return absent bytes when the text is not Base64 or is absent; empty bytes for empty text
/// \throws Exception as zlibDecompressed() does, for what is no zlib stream
/// \operation{decodeXMLData}
[[nodiscard]] DRAVELIN_EXPORT QByteArray decodeXMLData(const QString &text);

/// The bytes of a document as text: compressed by zlibCompressed(), then in Base64, padded and without line breaks.
/// \return absent text for empty or absent bytes
/// \operation{encodeXMLData}
[[nodiscard]] DRAVELIN_EXPORT QString encodeXMLData(const QByteArray &data);
/// @}

/// \name Nodes
/// @{

/// Adds an element as the last child.
/// \return the new element; without a parent it stands alone. Nothing, and a line in the log, when the name is none or
/// the parent cannot have it
/// \operation{addXMLElement}
DRAVELIN_EXPORT std::shared_ptr<XMLElement> addXMLElement(const std::shared_ptr<XMLNode> &parent, const QString &name);

/// Sets an attribute of an element, or adds it at the end; absent text counts as empty. What cannot be set is a line in
/// the log.
/// \operation{addXMLAttribute}
DRAVELIN_EXPORT void addXMLAttribute(const std::shared_ptr<XMLNode> &element, const QString &name,
                                     const QString &value);

/// The child at an index, of whatever kind.
/// \return nothing for an index outside
/// \operation{getXMLElement}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<XMLNode> getXMLElement(const std::shared_ptr<XMLNode> &node,
                                                                     qsizetype index);

/// The text of an attribute.
/// \return empty text, never absent, when there is no such attribute or element
/// \operation{getXMLAttribute}
[[nodiscard]] DRAVELIN_EXPORT QString getXMLAttribute(const std::shared_ptr<XMLNode> &element, const QString &name);

/// Finds the children of a name one after the other. Case counts.
/// \param position where to begin, 0 for the first child; then one behind the child found, or 0 when there is no
/// further one
/// \return nothing when there is no further one
/// \cost all the calls together look at every child once
/// \operation{findXmlNode}
[[nodiscard]] DRAVELIN_EXPORT std::shared_ptr<XMLNode> findXmlNode(const std::shared_ptr<XMLNode> &parent,
                                                                   qsizetype &position, const QString &name);
/// @}

/// \name Text
/// @{

/// The document with every element on a line of its own; what is not well-formed is repaired, as far as it goes, see
/// NSXMLDocumentTidyXML and NSXMLNodePrettyPrint.
/// \return empty text, not absent, when there is no document in the text
/// \operation{prettyPrintXML}
[[nodiscard]] DRAVELIN_EXPORT QString prettyPrintXML(const QString &text);

/// Writes `&`, `<`, `>`, `'` and `"` as `&amp;`, `&lt;`, `&gt;`, `&apos;` and `&quot;`, and nothing else: text that has
/// been escaped before is escaped again. Absent text gives absent text.
/// \operation{escapeXMLText}
[[nodiscard]] DRAVELIN_EXPORT QString escapeXMLText(const QString &text);

/// Logs the document, two carriage returns before and behind; the log writes them and line feeds as `\r` and `\n`.
/// \operation{dumpXMLToLog}
DRAVELIN_EXPORT void dumpXMLToLog(const std::shared_ptr<XMLDocument> &document);
/// @}

} // namespace dravelin
