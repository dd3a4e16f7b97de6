// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>

static QTextStream out(stdout);

void base64()
{
    //! [base64]
    const QByteArray bytes = "Sketch\n";
    const QString text = dravelin::encodeBase64WithData(bytes);
    out << text << '\n';
    out << dravelin::decodeBase64ToData(text).size() << " bytes\n";

    out << dravelin::decodeBase64ToString("U2tl\r\ndGNo") << '\n'; // line ends and missing padding are tolerated
    if (dravelin::decodeBase64ToData("U2tl-dGNo").isNull())        // anything else is not
        out << "not Base64\n";
    //! [base64]
}

void lists()
{
    //! [lists]
    QStringList jobs;
    dravelin::enqueue(jobs, "first");
    dravelin::enqueue(jobs, "second");
    out << *dravelin::dequeue(jobs) << '\n'; // the head of the queue is the end of the list

    QVariantList rows{"A", "B", "C", "D"};
    const dravelin::Range moved = dravelin::moveRows(rows, {0, 2}, 4); // as a drag of rows to the end
    for (const QVariant &row : rows)
        out << row.toString();
    out << ", rows " << moved.location << " to " << moved.location + moved.length - 1 << '\n';

    dravelin::insertObjectSafe(rows, "E", 99); // an index that is not there appends
    try {
        dravelin::swap(rows, 0, 99);
    } catch (const dravelin::Exception &e) {
        out << e.what() << '\n';
    }
    //! [lists]
}

void texts()
{
    //! [texts]
    out << dravelin::trimWhiteSpace(" a b\n") << '\n';
    out << dravelin::leftString("Sketch", 2) << ' ' << dravelin::rightString("Sketch", 2) << '\n'; // not the last two
    out << dravelin::stripString("+49 (0)89", "0123456789") << '\n';                               // keeps, not strips
    out << dravelin::splitIntoLines("one\ntwo\n").size() << " pieces\n"; // the last one is empty
    out << '"' << dravelin::dump("\x0A\xFF") << "\"\n";
    //! [texts]
}

int main()
{
    base64();
    lists();
    texts();
}
