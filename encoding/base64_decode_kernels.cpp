// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Decoding as in W. Mula, D. Lemire, "Base64 encoding and decoding at almost the speed of a memory copy", 2019
// (AVX-512 with byte permutations) and "Faster Base64 Encoding and Decoding using AVX2 Instructions", 2018 (16-byte lookups).

#include <encoding/base64_kernels.h>

#include <dravelin/encoding/base64.h>

#include <algorithm>
#include <array>
#include <bit>
#include <type_traits>

#define HWY_WANT_AVX3_DL
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "encoding/base64_decode_kernels.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h comes first.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace dravelin::detail::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

namespace {

/// Lines without what separates them.
template <typename Char, typename Separator>
struct Lines
{
    const Char *in;
    const Char *separator;
    std::size_t length; ///< at least a block, and a multiple of four
    std::size_t column = 0;
    unsigned difference = 0; ///< bits that other separators have and this one has not, or the other way round
};

/// They are whole blocks then, wherever the lines end.
constexpr std::size_t manyLines = 16, veryManyLines = 2048;

template <typename Char, typename Separator>
HWY_ATTR HWY_INLINE unsigned difference(const Char *behind, const Char *separator, Separator length)
{
    unsigned bits = 0;
    for (std::size_t i = 0; i < length; ++i)
        bits |= unsigned(behind[i] ^ separator[i]);
    return bits;
}

#if HWY_TARGET == HWY_AVX3_DL
#include <encoding/base64_decode_vbmi-inl.h>
#else
#include <encoding/base64_decode_blocks-inl.h>
#endif

/// Characters behind a block that give room for what its store writes too much.
constexpr std::size_t storeMargin = 24;

template <typename Char>
HWY_ATTR HWY_INLINE std::size_t left(const Base64Cursor<Char> &cursor)
{
    return std::size_t(cursor.end - cursor.in);
}

#if HWY_TARGET != HWY_SCALAR

/// \return whether there were as many blocks, all of the alphabet
template <std::size_t Blocks, bool PastCaches = false, typename Char>
HWY_ATTR HWY_INLINE bool decodeBlocks(Base64Cursor<Char> &cursor, const Decoder &decoder)
{
    if (left(cursor) < Blocks * blockChars + storeMargin)
        return false;
    Vector fault = noFault(), block[Blocks];
    for (std::size_t i = 0; i < Blocks; ++i)
        block[i] = values(decoder, load(cursor.in + i * blockChars), fault);
    if (isFault(fault))
        return false;
    store<PastCaches>(block, decoder, cursor.out);
    cursor.in += Blocks * blockChars;
    cursor.out += Blocks * blockBytes;
    return true;
}

/// One line of at least a block: blocks from its start and one, overlapping them, at its end.
template <typename Char>
HWY_ATTR HWY_INLINE void decodeLine(const Decoder &decoder, const Char *line, std::size_t length, uchar *out,
                                    Vector &fault)
{
    std::size_t i = 0;
    for (; i + blockChars < length; i += blockChars)
        store({values(decoder, load(line + i), fault)}, decoder, out + i / 4 * 3);
    i = length - blockChars;
    store({values(decoder, load(line + i), fault)}, decoder, out + i / 4 * 3);
}

#if HWY_TARGET != HWY_AVX3_DL

/// \return whether they are all of the alphabet, and each followed by the separator
template <typename Char, typename Separator>
HWY_ATTR HWY_INLINE bool decodeManyLines(const Decoder &decoder, Lines<Char, Separator> lines, uchar *out)
{
    Vector fault = noFault();
    for (std::size_t i = 0; i < manyLines; ++i) {
        decodeLine(decoder, lines.in, lines.length, out, fault);
        lines.in += lines.length;
        lines.difference |= difference(lines.in, lines.separator, Separator());
        lines.in += Separator();
        out += lines.length / 4 * 3;
    }
    return !isFault(fault) && lines.difference == 0;
}

template <typename Char, typename Separator>
HWY_ATTR HWY_INLINE bool decodeVeryManyLines(const Decoder &, const Lines<Char, Separator> &, uchar *)
{
    return false;
}

#endif

/// \return whether there were as many lines, all as the ones before
template <std::size_t Count, typename Char, typename Separator>
HWY_ATTR HWY_INLINE bool decodeLinesAtOnce(Base64Cursor<Char> &cursor, const Decoder &decoder, std::size_t length,
                                           Separator separator)
{
    const std::size_t size = Count * (length + separator);
    if (left(cursor) < size + storeMargin)
        return false;
    const Lines<Char, Separator> lines{cursor.in, cursor.in - separator, length};
    if constexpr (Count == 1) {
        Vector fault = noFault();
        decodeLine(decoder, lines.in, length, cursor.out, fault);
        if (isFault(fault) || difference(lines.in + length, lines.separator, separator) != 0)
            return false;
    } else if (!(Count == manyLines ? decodeManyLines(decoder, lines, cursor.out)
                                    : decodeVeryManyLines(decoder, lines, cursor.out))) {
        return false;
    }
    cursor.in += size;
    cursor.out += Count * length / 4 * 3;
    return true;
}

template <typename Char, typename Separator>
HWY_ATTR HWY_INLINE void decodeLines(Base64Cursor<Char> &cursor, std::size_t length, Separator separator)
{
    if (length < blockChars || length % 4 != 0)
        return;
    const Decoder decoder = makeDecoder();
    Base64Cursor<Char> at = cursor; // in registers
    while (at.isLarge)
        at.isLarge = decodeLinesAtOnce<veryManyLines>(at, decoder, length, separator);
    while (decodeLinesAtOnce<manyLines>(at, decoder, length, separator)) {
    }
    while (decodeLinesAtOnce<1>(at, decoder, length, separator)) {
    }
    cursor = at;
}

#else

template <std::size_t Blocks, typename Char>
bool decodeBlocks(Base64Cursor<Char> &, const Decoder &)
{
    return false;
}

template <typename Char, typename Separator>
void decodeLines(Base64Cursor<Char> &, std::size_t, Separator)
{}

#endif

#if HWY_TARGET == HWY_AVX3_DL
template <typename Char>
HWY_ATTR HWY_INLINE void decodeLargeGroups(Base64Cursor<Char> &cursor, const Decoder &decoder)
{
    std::size_t groups = groupsToAlignment(cursor.out);
    for (; groups > 0 && left(cursor) >= blockChars && decodeBase64Group(cursor.in, cursor.out); --groups) {
        cursor.in += 4;
        cursor.out += 3;
    }
    while (groups == 0 && decodeBlocks<4, true>(cursor, decoder))
        fetchAhead(cursor.in);
}
#endif

template <typename Char>
HWY_ATTR HWY_INLINE void decodeGroups(Base64Cursor<Char> &cursor)
{
    const Decoder decoder = makeDecoder();
    Base64Cursor<Char> at = cursor; // in registers
#if HWY_TARGET == HWY_AVX3_DL
    if (at.isLarge)
        decodeLargeGroups(at, decoder);
#endif
    while (decodeBlocks<4>(at, decoder)) {
    }
    while (decodeBlocks<1>(at, decoder)) {
    }
    decodeRest(at, decoder);
    if (left(at) >= 4 && left(at) < blockChars + storeMargin)
        decodeRest(at, decoder);
    cursor = at;
}

template <typename Char>
HWY_ATTR HWY_INLINE void decodeLinesOfAny(Base64Cursor<Char> &cursor, std::size_t length, std::size_t separatorLength)
{
    if (separatorLength == 1)
        decodeLines(cursor, length, std::integral_constant<std::size_t, 1>());
    else if (separatorLength == 2)
        decodeLines(cursor, length, std::integral_constant<std::size_t, 2>());
}

} // namespace

HWY_ATTR bool decodesPastCaches() { return HWY_TARGET == HWY_AVX3_DL; }

HWY_ATTR void decodeGroupsOfBytes(Base64Cursor<uchar> &cursor) { decodeGroups(cursor); }
HWY_ATTR void decodeGroupsOfText(Base64Cursor<char16_t> &cursor) { decodeGroups(cursor); }

HWY_ATTR void decodeLinesOfBytes(Base64Cursor<uchar> &cursor, std::size_t length, std::size_t separatorLength)
{
    decodeLinesOfAny(cursor, length, separatorLength);
}

HWY_ATTR void decodeLinesOfText(Base64Cursor<char16_t> &cursor, std::size_t length, std::size_t separatorLength)
{
    decodeLinesOfAny(cursor, length, separatorLength);
}

} // namespace dravelin::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace dravelin::detail {

HWY_EXPORT(decodesPastCaches);
HWY_EXPORT(decodeGroupsOfBytes);
HWY_EXPORT(decodeGroupsOfText);
HWY_EXPORT(decodeLinesOfBytes);
HWY_EXPORT(decodeLinesOfText);

bool decodesBase64PastCaches() { return HWY_DYNAMIC_DISPATCH(decodesPastCaches)(); }

void decodeBase64Groups(Base64Cursor<uchar> &cursor) { HWY_DYNAMIC_DISPATCH(decodeGroupsOfBytes)(cursor); }
void decodeBase64Groups(Base64Cursor<char16_t> &cursor) { HWY_DYNAMIC_DISPATCH(decodeGroupsOfText)(cursor); }

void decodeBase64Lines(Base64Cursor<uchar> &cursor, std::size_t length, std::size_t separatorLength)
{
    HWY_DYNAMIC_DISPATCH(decodeLinesOfBytes)(cursor, length, separatorLength);
}

void decodeBase64Lines(Base64Cursor<char16_t> &cursor, std::size_t length, std::size_t separatorLength)
{
    HWY_DYNAMIC_DISPATCH(decodeLinesOfText)(cursor, length, separatorLength);
}

} // namespace dravelin::detail
#endif
