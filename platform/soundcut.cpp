// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/soundinput.h>

#include <QtCore/QtEndian>

#include <algorithm>
#include <numeric>

namespace dravelin::detail {

namespace {

constexpr qint64 LargestOggPage = 65'307;
constexpr qsizetype OggHeader = 27; ///< bytes before the list of the page's segments
constexpr int OggFlags = 5;
constexpr char OggEndOfStream = 4;

/// Some writers leave the padding byte at the end away.
bool endsBefore(quint32 chunk, qint64 size)
{
    const bool isUnknown = chunk == 0 || chunk >= 0xfffffff0U; // as files that were recorded into a pipe have it
    return !isUnknown && qint64(chunk) + 8 > size + 1;
}

qsizetype oggPageSize(const QByteArray &page)
{
    const auto segments = qsizetype(quint8(page[OggHeader - 1]));
    if (page.size() < OggHeader + segments)
        return OggHeader + segments;
    const auto first = page.begin() + OggHeader;
    return std::accumulate(first, first + segments, OggHeader + segments,
                           [](qsizetype sum, char length) { return sum + quint8(length); });
}

bool isOggCutOff(const SoundInput &input)
{
    const QByteArray end = input.part(std::max<qint64>(input.size() - LargestOggPage, 0), LargestOggPage);
    const QByteArray page = end.mid(end.lastIndexOf("OggS"));
    if (page.size() < OggHeader)
        return true;
    return !(page[OggFlags] & OggEndOfStream) || oggPageSize(page) > page.size();
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
