// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>

static QTextStream out(stdout);

void compression()
{
    //! [compression]
    const QByteArray bytes(10'000, 'x');
    const QByteArray packed = dravelin::zlibCompressed(bytes);
    out << packed.size() << " bytes for " << dravelin::zlibDecompressed(packed).size() << '\n';

    for (const QByteArray &received : {dravelin::zlibCompressed("Sketch").chopped(4), QByteArray("Sketch"), packed}) {
        try {
            const QByteArray result = dravelin::zlibDecompressed(received, 1000); // no more than 1000 bytes
            out << result.size() << " bytes\n";
        } catch (const dravelin::Exception &e) {
            out << e.what() << '\n';
        }
    }
    //! [compression]
}

void encoder()
{
    //! [encoder]
    dravelin::DataEncoder encoder;
    encoder.addString("title", "Sketch");
    encoder.addInteger("pages", 12);
    encoder.addBool("draft", true);
    const QByteArray blob = encoder.encodeData(); // for a settings entry, a text column, the clipboard
    out << blob << '\n';

    const auto copy = dravelin::DataEncoder::initWithData(blob);
    out << copy.getString("title") << ", " << copy.getInteger("pages") << " pages\n";
    out << copy.keys().join(", ") << '\n';
    out << '"' << copy.getString("author") << "\" " << copy.getInteger("author") << '\n'; // nothing is stored there
    //! [encoder]
}

void strangers()
{
    //! [strangers]
    const QByteArray received = "bm90IGEgYmxvYg=="; // from outside, and no blob
    dravelin::DataEncoder encoder;
    encoder.decodeData(received, 1 << 20); // a megabyte of records at most
    out << encoder.count() << " keys\n";
    //! [strangers]
}

int main()
{
    compression();
    encoder();
    strangers();
}
