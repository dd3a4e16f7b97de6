// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/xml.h>

#include <libxml/tree.h>

namespace dravelin::detail {

/// \param isUtf8 whether the bytes are UTF-8 whatever they declare
/// \return a document with a root element that prints as well-formed XML, to be freed; nothing on failure, which has been
/// logged
xmlDoc *parseXML(const QByteArray &data, XMLOptions options, bool isUtf8);

} // namespace dravelin::detail
