// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xmltext.h"

#include "platform/unicode.h"

#include <dravelin/platform/log.h>

#include <libxml/tree.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

bool isFit(QChar c)
{
    const char16_t unit = c.unicode();
    return unit >= 0x20 ? unit < 0xfffe : unit == u'\t' || unit == u'\n' || unit == u'\r';
}

/// What in the text XML cannot hold; empty when there is nothing.
QString unfitPart(const QString &text)
{
    if (!hasUtf8Form(text))
        return u"a lone surrogate"_s;
    const auto unfit = std::find_if_not(text.begin(), text.end(), isFit);
    return unfit == text.end() ? QString() : u"U+%1"_s.arg(uint(unfit->unicode()), 4, 16, QChar(u'0'));
}

} // namespace

void logXML(const QString &message) { logWarning(u"XML: "_s + message); }

QString textOf(const xmlChar *bytes) { return bytes ? QString::fromUtf8(chars(bytes)) : u""_s; }

QString takeText(xmlChar *bytes)
{
    const QString text = textOf(bytes);
    xmlFree(bytes);
    return text;
}

QByteArray xmlText(const QString &text, const QString &purpose)
{
    const QString unfit = unfitPart(text);
    if (unfit.isEmpty())
        return text.isEmpty() ? QByteArray("") : text.toUtf8();
    logXML(u"%1 cannot hold %2"_s.arg(purpose, unfit));
    return {};
}

QByteArray xmlName(const QString &name, const QString &purpose)
{
    const QByteArray bytes = xmlText(name, purpose);
    if (bytes.isNull() || xmlValidateQName(xmlBytes(bytes), 0) == 0)
        return bytes;
    logXML(u"\"%1\" is no name for %2"_s.arg(name, purpose));
    return {};
}

bool fitsComment(const QByteArray &text)
{
    const bool fits = !text.contains("--") && !text.endsWith('-');
    if (!fits)
        logXML(u"a comment cannot hold \"--\", or end with \"-\""_s);
    return fits;
}

bool fitsProcessingInstruction(const QByteArray &target, const QByteArray &content)
{
    const bool fits = target.compare("xml", Qt::CaseInsensitive) != 0 && !content.contains("?>");
    if (!fits)
        logXML(u"a processing instruction cannot be named \"xml\" or hold \"?>\""_s);
    return fits;
}

} // namespace dravelin::detail
