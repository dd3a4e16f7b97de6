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

#if HWY_TARGET == HWY_AVX3_DL

constexpr std::size_t blockChars = 64;
constexpr std::size_t blockBytes = 48;

using Vector = __m512i;

struct Decoder
{
    Vector lower, upper; ///< the values of the ASCII characters, 0x80 for what is none
    Vector pack;         ///< picks the three bytes of each group
};

HWY_ATTR HWY_INLINE Decoder makeDecoder()
{
    alignas(64) static constexpr auto values = [] {
        std::array<uint8_t, 128> table{};
        for (uint8_t &value : table)
            value = 0x80;
        for (uint8_t i = 0; i < 64; ++i)
            table[i < 26 ? 'A' + i : i < 52 ? 'a' + i - 26 : i < 62 ? '0' + i - 52 : i == 62 ? '+' : '/'] = i;
        return table;
    }();
    alignas(64) static constexpr auto pack = [] {
        std::array<uint8_t, 64> order{};
        for (uint8_t i = 0; i < blockBytes; ++i)
            order[i] = uint8_t(i / 3 * 4 + 2 - i % 3);
        return order;
    }();
    return {_mm512_load_si512(values.data()), _mm512_load_si512(values.data() + 64), _mm512_load_si512(pack.data())};
}

HWY_ATTR HWY_INLINE Vector load(const uchar *text) { return _mm512_loadu_si512(text); }

/// A character beyond 255 becomes one that is not of the alphabet, here and below.
HWY_ATTR HWY_INLINE Vector load(const char16_t *text)
{
    const __m256i first = _mm512_cvtusepi16_epi8(_mm512_loadu_si512(text));
    return _mm512_inserti64x4(_mm512_castsi256_si512(first), _mm512_cvtusepi16_epi8(_mm512_loadu_si512(text + 32)), 1);
}

HWY_ATTR HWY_INLINE Vector loadPart(const uchar *text, quint64 which)
{
    return _mm512_mask_loadu_epi8(_mm512_set1_epi8('A'), which, text);
}

HWY_ATTR HWY_INLINE Vector loadPart(const char16_t *text, quint64 which)
{
    const __m512i fill = _mm512_set1_epi16('A');
    const __m512i first = _mm512_mask_loadu_epi16(fill, __mmask32(which), text);
    const __m512i second = _mm512_mask_loadu_epi16(fill, __mmask32(which >> 32), text + 32);
    return _mm512_inserti64x4(_mm512_castsi256_si512(_mm512_cvtusepi16_epi8(first)), _mm512_cvtusepi16_epi8(second), 1);
}

HWY_ATTR HWY_INLINE Vector noFault() { return _mm512_setzero_si512(); }
HWY_ATTR HWY_INLINE bool isFault(Vector fault) { return _mm512_movepi8_mask(fault) != 0; }

/// \param fault gets the upper bit of every character that is not of the alphabet
HWY_ATTR HWY_INLINE Vector values(const Decoder &decoder, Vector text, Vector &fault)
{
    const Vector values = _mm512_permutex2var_epi8(decoder.lower, text, decoder.upper);
    fault = _mm512_ternarylogic_epi32(fault, values, text, 0xFE); // all three or-ed
    return values;
}

HWY_ATTR HWY_INLINE Vector packed(const Decoder &decoder, Vector values)
{
    const Vector pairs = _mm512_maddubs_epi16(values, _mm512_set1_epi32(0x01400140));
    return _mm512_permutexvar_epi8(decoder.pack, _mm512_madd_epi16(pairs, _mm512_set1_epi32(0x00011000)));
}

HWY_ATTR HWY_INLINE void store(Vector values, const Decoder &decoder, uchar *out)
{
    _mm512_storeu_si512(out, packed(decoder, values));
}

/// Up to 16 groups, which may be the last.
/// \return how many there are before the first that is not of the alphabet
template <typename Char>
HWY_ATTR HWY_INLINE std::size_t decodePart(const Decoder &decoder, const Char *text, std::size_t groups, uchar *out)
{
    Vector fault = noFault();
    const Vector part = values(decoder, loadPart(text, ~quint64(0) >> (64 - 4 * groups)), fault);
    const quint64 faults = _mm512_movepi8_mask(fault);
    const std::size_t valid = faults == 0 ? groups : std::size_t(std::countr_zero(faults)) / 4;
    _mm512_mask_storeu_epi8(out, (quint64(1) << 3 * valid) - 1, packed(decoder, part));
    return valid;
}

#else

#if HWY_TARGET != HWY_SCALAR

// Blocks of 16 characters, which give 12 bytes; two of them at once where vectors are that long.
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
using Block = hn::FixedTag<uint8_t, 32>;
#else
using Block = hn::FixedTag<uint8_t, 16>;
#endif
using Vector = hn::Vec<Block>;
constexpr std::size_t blockChars = hn::MaxLanes(Block());
constexpr std::size_t blockBytes = blockChars / 4 * 3;

struct Decoder
{};

HWY_ATTR HWY_INLINE Decoder makeDecoder() { return {}; }

HWY_ATTR HWY_INLINE Vector load(const uchar *text) { return hn::LoadU(Block(), text); }

/// A character beyond 255 becomes one that is not of the alphabet.
HWY_ATTR HWY_INLINE Vector load(const char16_t *text)
{
    const hn::Half<Block> half;
    const hn::Repartition<int16_t, Block> wide;
    const auto *units = reinterpret_cast<const int16_t *>(text);
    const auto first = hn::DemoteTo(half, hn::LoadU(wide, units));
    return hn::Combine(Block(), hn::DemoteTo(half, hn::LoadU(wide, units + blockChars / 2)), first);
}

HWY_ATTR HWY_INLINE Vector noFault() { return hn::Zero(Block()); }
HWY_ATTR HWY_INLINE bool isFault(Vector fault) { return !hn::AllTrue(Block(), hn::Eq(fault, noFault())); }

/// \param fault gets bits for every character that is not of the alphabet
HWY_ATTR HWY_INLINE Vector values(const Decoder &, Vector text, Vector &fault)
{
    const Block d;
    // A character is of the alphabet when its upper and its lower half have no class of faults in common.
    alignas(16) static constexpr uint8_t faultsOfUpper[16] = {0x10, 0x10, 0x01, 0x02, 0x04, 0x08, 0x04, 0x08,
                                                              0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x10};
    alignas(16) static constexpr uint8_t faultsOfLower[16] = {0x15, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11, 0x11,
                                                              0x11, 0x11, 0x13, 0x1A, 0x1B, 0x1B, 0x1B, 0x1A};
    alignas(16) static constexpr uint8_t distances[16] = {0, 16, 19, 4, 191, 191, 185, 185};
    const auto upper = hn::ShiftRight<4>(text), lower = hn::And(text, hn::Set(d, uint8_t(15)));
    fault = hn::Or(fault, hn::And(hn::TableLookupBytes(hn::LoadDup128(d, faultsOfUpper), upper),
                                  hn::TableLookupBytes(hn::LoadDup128(d, faultsOfLower), lower)));
    const auto isSlash = hn::VecFromMask(d, hn::Eq(text, hn::Set(d, uint8_t('/')))); // -1 there
    return hn::Add(text, hn::TableLookupBytes(hn::LoadDup128(d, distances), hn::Add(upper, isSlash)));
}

/// The 24 bits of each group of four values.
HWY_ATTR HWY_INLINE Vector groups(Vector values)
{
    const Block d;
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
    const auto pairs = _mm256_maddubs_epi16(values.raw, _mm256_set1_epi32(0x01400140));
    return Vector{_mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000))};
#elif HWY_TARGET == HWY_SSSE3 || HWY_TARGET == HWY_SSE4
    const auto pairs = _mm_maddubs_epi16(values.raw, _mm_set1_epi32(0x01400140));
    return Vector{_mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000))};
#else
    const hn::RepartitionToWide<Block> d16;
    const hn::RepartitionToWide<decltype(d16)> d32;
    const auto units = hn::BitCast(d16, values);
    const auto pairs = hn::BitCast(
        d32, hn::Or(hn::ShiftLeft<6>(hn::And(units, hn::Set(d16, uint16_t(0xFF)))), hn::ShiftRight<8>(units)));
    return hn::BitCast(
        d, hn::Or(hn::ShiftLeft<12>(hn::And(pairs, hn::Set(d32, uint32_t(0xFFFF)))), hn::ShiftRight<16>(pairs)));
#endif
}

HWY_ATTR HWY_INLINE void store(Vector values, const Decoder &, uchar *out)
{
    const Block d;
    alignas(16) static constexpr uint8_t order[16] = {2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, 3, 3, 3, 3};
    const auto bytes = hn::TableLookupBytes(groups(values), hn::LoadDup128(d, order));
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
    const hn::Half<Block> half;
    hn::StoreU(hn::LowerHalf(half, bytes), half, out);
    hn::StoreU(hn::UpperHalf(half, bytes), half, out + 12);
#else
    hn::StoreU(bytes, d, out);
#endif
}

#else

constexpr std::size_t blockChars = 16;

struct Decoder
{};

HWY_ATTR HWY_INLINE Decoder makeDecoder() { return {}; }

#endif

/// \return whether all four are of the alphabet
template <typename Char>
HWY_ATTR HWY_INLINE bool decodeGroup(const Char *text, uchar *out)
{
    if ((text[0] | text[1] | text[2] | text[3]) > 127)
        return false;
    const int a = _base64DecodingTable[text[0]], b = _base64DecodingTable[text[1]];
    const int c = _base64DecodingTable[text[2]], d = _base64DecodingTable[text[3]];
    if ((a | b | c | d) < 0)
        return false;
    const auto bits = quint32(a << 18 | b << 12 | c << 6 | d);
    out[0] = uchar(bits >> 16);
    out[1] = uchar(bits >> 8);
    out[2] = uchar(bits);
    return true;
}

template <typename Char>
HWY_ATTR HWY_INLINE std::size_t decodePart(const Decoder &, const Char *text, std::size_t groups, uchar *out)
{
    std::size_t valid = 0;
    while (valid < groups && decodeGroup(text + 4 * valid, out + 3 * valid))
        ++valid;
    return valid;
}

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
template <std::size_t Blocks, typename Char>
HWY_ATTR HWY_INLINE bool decodeBlocks(Base64Cursor<Char> &cursor, const Decoder &decoder)
{
    if (left(cursor) < Blocks * blockChars + storeMargin)
        return false;
    Vector fault = noFault(), block[Blocks];
    for (std::size_t i = 0; i < Blocks; ++i)
        block[i] = values(decoder, load(cursor.in + i * blockChars), fault);
    if (isFault(fault))
        return false;
    for (std::size_t i = 0; i < Blocks; ++i)
        store(block[i], decoder, cursor.out + i * blockBytes);
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
        store(values(decoder, load(line + i), fault), decoder, out + i / 4 * 3);
    i = length - blockChars;
    store(values(decoder, load(line + i), fault), decoder, out + i / 4 * 3);
}

/// The characters behind the line that are not those of the separator.
template <typename Char>
HWY_ATTR HWY_INLINE unsigned difference(const Char *behind, const Char *separator, std::size_t length)
{
    unsigned bits = 0;
    for (std::size_t i = 0; i < length; ++i)
        bits |= unsigned(behind[i] ^ separator[i]);
    return bits;
}

/// \return whether all of the lines are as the ones before
template <typename Char, typename Separator>
HWY_ATTR HWY_INLINE bool decodeLinesAtOnce(Base64Cursor<Char> &cursor, const Decoder &decoder, std::size_t lines,
                                           std::size_t length, Separator separatorLength)
{
    const Char *const separator = cursor.in - separatorLength, *in = cursor.in;
    uchar *out = cursor.out;
    Vector fault = noFault();
    unsigned different = 0;
    for (std::size_t line = 0; line < lines; ++line) {
        decodeLine(decoder, in, length, out, fault);
        different |= difference(in + length, separator, separatorLength);
        in += length + separatorLength;
        out += length / 4 * 3;
    }
    if (isFault(fault) || different != 0)
        return false;
    cursor.in = in;
    cursor.out = out;
    return true;
}

template <typename Char, typename Separator>
HWY_ATTR HWY_INLINE void decodeLines(Base64Cursor<Char> &cursor, std::size_t length, Separator separatorLength)
{
    if (length < blockChars || length % 4 != 0)
        return;
    const Decoder decoder = makeDecoder();
    for (std::size_t lines : {16, 1}) {
        while (left(cursor) >= lines * (length + separatorLength) + storeMargin) {
            if (!decodeLinesAtOnce(cursor, decoder, lines, length, separatorLength))
                break;
        }
    }
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

template <typename Char>
HWY_ATTR HWY_INLINE void decodeGroups(Base64Cursor<Char> &cursor)
{
    const Decoder decoder = makeDecoder();
    while (decodeBlocks<4>(cursor, decoder)) {
    }
    while (decodeBlocks<1>(cursor, decoder)) {
    }
    while (left(cursor) >= 4) {
        const std::size_t groups = std::min(left(cursor), blockChars) / 4;
        const std::size_t valid = decodePart(decoder, cursor.in, groups, cursor.out);
        cursor.in += 4 * valid;
        cursor.out += 3 * valid;
        if (valid < groups)
            return;
    }
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

HWY_EXPORT(decodeGroupsOfBytes);
HWY_EXPORT(decodeGroupsOfText);
HWY_EXPORT(decodeLinesOfBytes);
HWY_EXPORT(decodeLinesOfText);

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
