// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArray>

#include <libxml/tree.h>

// What a tidy parse lets pass and a well-formed document cannot have.

namespace dravelin::detail {

/// Keeps the first of every name. \param attributes five entries each, as the parser hands them over
/// \return how many are left, in order
int dropRepeatedAttributes(const xmlChar **attributes, int count);

/// The text without "--" and without "-" at its end: a space stands between and behind.
QByteArray repairedComment(const xmlChar *text);

/// Takes away the document type: its declarations may be broken off.
void dropDocumentType(xmlDoc *document);

} // namespace dravelin::detail
