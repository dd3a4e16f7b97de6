// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <libxml/xmlstring.h>

namespace dravelin::detail {

inline const xmlChar *xmlBytes(const QByteArray &bytes) { return reinterpret_cast<const xmlChar *>(bytes.constData()); }
inline const char *chars(const xmlChar *bytes) { return reinterpret_cast<const char *>(bytes); }

/// The text; empty for none.
QString textOf(const xmlChar *bytes);
/// The text, which is freed.
QString takeText(xmlChar *bytes);

/// The text in UTF-8, of length 0 for absent text.
/// \return absent bytes when XML cannot hold the text; it has been logged then, with what it was meant for
QByteArray xmlText(const QString &text, const QString &purpose);

/// The same for a name.
QByteArray xmlName(const QString &name, const QString &purpose);

/// Whether the text, which xmlText() has passed, can stand in a comment or a processing instruction; logs if it cannot.
bool fitsComment(const QByteArray &text);
bool fitsProcessingInstruction(const QByteArray &target, const QByteArray &content);

/// One line of the log: "XML: " and the message.
void logXML(const QString &message);

} // namespace dravelin::detail
