// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/soundinput.h>

#include <QtCore/QtEndian>

#include <algorithm>

namespace dravelin::detail {

namespace {

constexpr qint64 LargestOggPage = 65'307;
constexpr int OggFlags = 5; ///< their place in a page
constexpr char OggEndOfStream = 4;

/// Some writers leave the padding byte at the end away.
bool endsBefore(quint32 chunk, qint64 size)
{
    const bool isUnknown = chunk == 0 || chunk >= 0xfffffff0U; // as files that were recorded into a pipe have it
    return !isUnknown && qint64(chunk) + 8 > size + 1;
}

/// The decoder notices a page that is cut, but not that whole pages are gone. Of all pages the last one bears a mark.
bool isOggCutOff(const SoundInput &input)
{
    const QByteArray end = input.part(std::max<qint64>(input.size() - LargestOggPage, 0), LargestOggPage);
    const QByteArray page = end.mid(end.lastIndexOf("OggS"));
    return page.size() <= OggFlags || !(page[OggFlags] & OggEndOfStream);
}

} // namespace

bool isCutOff(const SoundInput &input)
{
    const QByteArray start = input.part(0, 12);
    if (start.size() < 12)
        return false;
    if (start.startsWith("OggS"))
        return isOggCutOff(input);
    if (start.startsWith("RIFF"))
        return endsBefore(qFromLittleEndian<quint32>(start.constData() + 4), input.size());
    if (start.startsWith("FORM"))
        return endsBefore(qFromBigEndian<quint32>(start.constData() + 4), input.size());
    return false;
}

} // namespace dravelin::detail
