// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QVarLengthArray>

#include <libxml/tree.h>

// What a tidy parse lets pass and a well-formed document cannot have.

namespace dravelin::detail {

/// How many entries the parser has for an attribute: name, prefix, namespace, begin and end of the value.
constexpr int AttributeFields = 5;

/// The first attribute of every name, in order. The parser's own array must stay as it is: it frees values by their place.
QVarLengthArray<const xmlChar *> withoutRepeatedAttributes(const xmlChar **attributes, int count);

/// The text without "--" and without "-" at its end: a space stands between and behind.
QByteArray repairedComment(const xmlChar *text);

/// Whether all texts and names are UTF-8. Bytes that are not pass the parser here and there.
bool holdsUtf8(const xmlDoc *document);

/// Takes away the document type, the declarations in which may be broken off, and the version, which may be none.
void resetProlog(xmlDoc *document);

} // namespace dravelin::detail
