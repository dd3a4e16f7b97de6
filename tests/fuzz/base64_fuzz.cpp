// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <encoding/base64_reference.h>

#include <hwy/targets.h>

#include <cstdlib>
#include <vector>

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// The lowest bits of a number choose one of the kinds of vectors that this processor has.
int64_t chosenTarget(unsigned number)
{
    int64_t left = hwy::SupportedTargets();
    for (; number % 8 > 0 && (left & (left - 1)) != 0; --number)
        left &= left - 1;
    return left & -left;
}

void decodesAsTheReference(const QString &text)
{
    const QByteArray expected = dravelin::detail::decodeBase64Reference(text);
    const QByteArray decoded = dravelin::decodeBase64ToData(text);
    require(decoded == expected && decoded.isNull() == expected.isNull());
}

} // namespace

// Any text decodes as by the reference, with whichever vectors, and any bytes survive being encoded.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    hwy::SetSupportedTargetsForTest(0);
    hwy::SetSupportedTargetsForTest(chosenTarget(data[0]));
    // Memory that ends where the text ends, for the sanitizer to see.
    const std::vector<char> exact(data + 1, data + size);
    const QByteArrayView bytes(exact.data(), qsizetype(exact.size()));

    decodesAsTheReference(QString::fromLatin1(bytes));
    decodesAsTheReference(QString::fromUtf8(bytes));
    const QString encoded = dravelin::encodeBase64WithData(bytes.toByteArray());
    require(encoded == dravelin::detail::encodeBase64Reference(bytes));
    require(bytes.isEmpty() || dravelin::decodeBase64ToData(encoded) == bytes);
    std::vector<char> room(size_t(dravelin::decodedBase64Capacity(bytes.size())));
    const QByteArray expected = dravelin::detail::decodeBase64Reference(QString::fromLatin1(bytes));
    require(dravelin::decodeBase64Into(room, bytes) == (expected.isNull() && !bytes.isEmpty() ? -1 : expected.size()));
    return 0;
}
