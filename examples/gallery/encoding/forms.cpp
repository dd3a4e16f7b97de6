// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "encoding/forms.h"

#include <dravelin/dravelin.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QLocale>

using namespace Qt::StringLiterals;
using namespace dravelin;

namespace {

QByteArray asBlob(const QByteArray &bytes)
{
    DataEncoder encoder;
    encoder.addString(u"content"_s, QString::fromLatin1(bytes));
    encoder.addInteger(u"size"_s, bytes.size());
    return encoder.encodeData();
}

QByteArray fromBlob(const QByteArray &blob)
{
    return DataEncoder::initWithData(blob).getString(u"content"_s).toLatin1();
}

QByteArray asDocument(const QByteArray &bytes)
{
    const auto document = createEmptyXMLDocument();
    const auto file = addXMLElement(document->rootElement(), u"file"_s);
    addXMLAttribute(file, u"size"_s, QString::number(bytes.size()));
    file->setStringValue(encodeBase64WithData(bytes));
    return document->XMLData();
}

QByteArray fromDocument(const QByteArray &data)
{
    const auto document = XMLDocument::fromData(data);
    qsizetype position = 0;
    const auto file = document ? findXmlNode(document->rootElement(), position, u"file"_s) : nullptr;
    return file ? decodeBase64ToData(file->stringValue()) : QByteArray();
}

QByteArray asArchive(const QByteArray &bytes)
{
    return KeyedArchiver::archivedDataWithRootObject(QVariantMap{{u"content"_s, bytes}, {u"size"_s, bytes.size()}});
}

QByteArray fromArchive(const QByteArray &data)
{
    return KeyedUnarchiver::unarchiveObjectWithData(data).toMap().value(u"content"_s).toByteArray();
}

double secondsOf(const std::function<QByteArray(const QByteArray &)> &function, const QByteArray &in, QByteArray &out)
{
    QElapsedTimer timer;
    timer.start();
    out = function(in);
    return double(timer.nsecsElapsed()) / 1e9;
}

} // namespace

QList<Form> allForms()
{
    return {{u"Base64"_s, u"base64"_s, encodeBase64ToBytes, decodeBase64FromBytes},
            {u"zlib stream"_s, u"zlib"_s, zlibCompressed, [](const auto &data) { return zlibDecompressed(data); }},
            {u"zlib as Base64"_s, u"zlib.base64"_s, [](const auto &data) { return encodeXMLData(data).toLatin1(); },
             [](const auto &text) { return decodeXMLData(QString::fromLatin1(text)); }},
            {u"Data encoder"_s, u"blob"_s, asBlob, fromBlob},
            {u"XML document"_s, u"xml"_s, asDocument, fromDocument},
            {u"Keyed archive"_s, u"plist"_s, asArchive, fromArchive}};
}

FormResult tryForm(const Form &form, const QByteArray &bytes)
{
    FormResult result{form.name, form.fileSuffix, bytes.size(), {}};
    QByteArray back;
    try {
        result.writeSeconds = secondsOf(form.write, bytes, result.written);
        result.readSeconds = secondsOf(form.read, result.written, back);
    } catch (const Exception &e) {
        qWarning() << form.name << e.what();
    }
    result.isSame = back == bytes;
    return result;
}

QString rateText(qsizetype bytes, double seconds)
{
    return seconds > 0
               ? QLocale().formattedDataSize(qint64(double(bytes) / seconds), 1, QLocale::DataSizeSIFormat) + u"/s"_s
               : QString();
}
