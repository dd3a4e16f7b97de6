// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <cstdlib>

// Any text decodes to bytes or to nothing, what it decodes to survives encoding, and so do the input's own bytes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const QByteArray decoded = dravelin::decodeBase64ToData(QString::fromLatin1(bytes));
    if (!decoded.isEmpty() && dravelin::decodeBase64ToData(dravelin::encodeBase64WithData(decoded)) != decoded)
        std::abort();
    if (!bytes.isEmpty() && dravelin::decodeBase64ToData(dravelin::encodeBase64WithData(bytes)) != bytes)
        std::abort();
    (void)dravelin::decodeBase64ToString(QString::fromUtf8(bytes));
    return 0;
}
