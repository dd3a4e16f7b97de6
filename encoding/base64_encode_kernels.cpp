// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Encoding as in W. Mula, D. Lemire, "Base64 encoding and decoding at almost the speed of a memory copy", 2019
// (AVX-512 with byte permutations) and "Faster Base64 Encoding and Decoding using AVX2 Instructions", 2018 (16-byte lookups).

#include <encoding/base64_kernels.h>

#include <dravelin/encoding/base64.h>

#include <array>

#define HWY_WANT_AVX3_DL
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "encoding/base64_encode_kernels.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h comes first.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace dravelin::detail::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

namespace {

#if HWY_TARGET == HWY_AVX3_DL

constexpr std::size_t blockBytes = 48;
constexpr std::size_t blockChars = 64;
constexpr std::size_t worthAligning = 1024;

struct Encoder
{
    __m512i spread;   ///< the bytes of each group as 1 0 2 1, so that each character's bits lie together
    __m512i shifts;   ///< where they start in 64 bits
    __m512i alphabet; ///< looked up by the lower 6 bits
};

HWY_ATTR HWY_INLINE Encoder makeEncoder()
{
    alignas(64) static constexpr auto spread = [] {
        std::array<uint8_t, 64> order{};
        for (uint8_t i = 0; i < 64; ++i)
            order[i] = uint8_t(i / 4 * 3 + (i % 4 == 1 ? 0 : i % 4 == 2 ? 2 : 1));
        return order;
    }();
    return {_mm512_load_si512(spread.data()), _mm512_set1_epi64(0x3036242A1016040A),
            _mm512_loadu_si512(_base64EncodingTable)};
}

HWY_ATTR HWY_INLINE __m512i encoded(const Encoder &encoder, __m512i bytes)
{
    const __m512i spread = _mm512_permutexvar_epi8(encoder.spread, bytes);
    return _mm512_permutexvar_epi8(_mm512_multishift_epi64_epi8(encoder.shifts, spread), encoder.alphabet);
}

HWY_ATTR HWY_INLINE void store(__m512i characters, uchar *text) { _mm512_storeu_si512(text, characters); }

HWY_ATTR HWY_INLINE void store(__m512i characters, char16_t *text)
{
    _mm512_storeu_si512(text, _mm512_cvtepu8_epi16(_mm512_castsi512_si256(characters)));
    _mm512_storeu_si512(text + 32, _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(characters, 1)));
}

HWY_ATTR HWY_INLINE void store(__m512i characters, uchar *text, quint64 which)
{
    _mm512_mask_storeu_epi8(text, which, characters);
}

HWY_ATTR HWY_INLINE void store(__m512i characters, char16_t *text, quint64 which)
{
    _mm512_mask_storeu_epi16(text, __mmask32(which), _mm512_cvtepu8_epi16(_mm512_castsi512_si256(characters)));
    _mm512_mask_storeu_epi16(text + 32, __mmask32(which >> 32),
                             _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(characters, 1)));
}

/// At most 48 bytes, padded when they are the last.
template <typename Char>
HWY_ATTR HWY_INLINE void encodePart(const Encoder &encoder, const uchar *bytes, std::size_t size, Char *text)
{
    const std::size_t length = (size + 2) / 3 * 4, padding = (3 - size % 3) % 3;
    const __m512i input = _mm512_maskz_loadu_epi8((quint64(1) << size) - 1, bytes);
    const quint64 padded = ((quint64(1) << padding) - 1) << (length - padding);
    const __m512i characters = _mm512_mask_mov_epi8(encoded(encoder, input), padded, _mm512_set1_epi8('='));
    store(characters, text, length == 0 ? 0 : ~quint64(0) >> (64 - length));
}

template <typename Char>
HWY_ATTR HWY_INLINE void encode(const uchar *bytes, std::size_t size, Char *text)
{
    const Encoder encoder = makeEncoder();
    if (size >= worthAligning) {
        // Whole groups up to where the text is aligned, so that no further store crosses a cache line.
        const std::size_t groups = (-reinterpret_cast<quintptr>(text) & 63) / (4 * sizeof(Char));
        encodePart(encoder, bytes, 3 * groups, text);
        bytes += 3 * groups;
        size -= 3 * groups;
        text += 4 * groups;
    }
    for (; size >= 4 * blockBytes + 16; bytes += 4 * blockBytes, size -= 4 * blockBytes, text += 4 * blockChars) {
        for (std::size_t i = 0; i < 4; ++i)
            store(encoded(encoder, _mm512_loadu_si512(bytes + i * blockBytes)), text + i * blockChars);
    }
    for (; size > blockBytes; bytes += blockBytes, size -= blockBytes, text += blockChars)
        encodePart(encoder, bytes, blockBytes, text);
    if (size > 0)
        encodePart(encoder, bytes, size, text);
}

#else

#if HWY_TARGET != HWY_SCALAR

// Blocks of 16 bytes, of which 12 are taken; two of them at once where vectors are that long.
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
using Block = hn::FixedTag<uint8_t, 32>;
constexpr std::size_t blockBytes = 24;
#else
using Block = hn::FixedTag<uint8_t, 16>;
constexpr std::size_t blockBytes = 12;
#endif
constexpr std::size_t blockChars = blockBytes / 3 * 4;
constexpr std::size_t blockReads = blockBytes + 4;
using Bytes = hn::Vec<Block>;

HWY_ATTR HWY_INLINE Bytes load(const uchar *bytes)
{
#if HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_AVX3
    const hn::Half<Block> half;
    return hn::Combine(Block(), hn::LoadU(half, bytes + 12), hn::LoadU(half, bytes));
#else
    return hn::LoadU(Block(), bytes);
#endif
}

/// The 6-bit values of the characters.
HWY_ATTR HWY_INLINE Bytes values(Bytes bytes)
{
    const Block d;
    const hn::RepartitionToWide<Block> d16;
    const hn::RepartitionToWide<decltype(d16)> d32;
    alignas(16) static constexpr uint8_t order[16] = {1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10};
    const auto groups = hn::BitCast(d32, hn::TableLookupBytes(bytes, hn::LoadDup128(d, order)));
    const auto upper = hn::BitCast(d16, hn::And(groups, hn::Set(d32, 0x0FC0FC00)));
    const auto lower = hn::BitCast(d16, hn::And(groups, hn::Set(d32, 0x003F03F0)));
    // A product shifts each 16-bit half by a distance of its own: down by 10 and 6, up by 4 and 8.
    const auto down = hn::MulHigh(upper, hn::BitCast(d16, hn::Set(d32, 0x04000040)));
    const auto up = hn::Mul(lower, hn::BitCast(d16, hn::Set(d32, 0x01000010)));
    return hn::BitCast(d, hn::Or(down, up));
}

/// Adds to each value the distance to its character: 13 ranges, of which ten hold one digit each.
HWY_ATTR HWY_INLINE Bytes characters(Bytes values)
{
    const Block d;
    alignas(16) static constexpr uint8_t distances[16] = {'a' - 26, 252, 252, 252, 252, 252, 252, 252,
                                                          252,      252, 252, 237, 240, 'A', 0,   0};
    const auto beyondLetters = hn::SaturatedSub(values, hn::Set(d, uint8_t(51)));
    const hn::Repartition<int8_t, Block> ds;
    const auto isUpper = hn::Lt(hn::BitCast(ds, values), hn::Set(ds, int8_t(26)));
    const auto range = hn::Or(beyondLetters, hn::BitCast(d, hn::IfThenElseZero(isUpper, hn::Set(ds, int8_t(13)))));
    return hn::Add(values, hn::TableLookupBytes(hn::LoadDup128(d, distances), range));
}

HWY_ATTR HWY_INLINE void store(Bytes characters, uchar *text) { hn::StoreU(characters, Block(), text); }

HWY_ATTR HWY_INLINE void store(Bytes characters, char16_t *text)
{
    const hn::Half<Block> half;
    const hn::Repartition<uint16_t, Block> wide;
    auto *units = reinterpret_cast<uint16_t *>(text);
    hn::StoreU(hn::PromoteTo(wide, hn::LowerHalf(half, characters)), wide, units);
    hn::StoreU(hn::PromoteTo(wide, hn::UpperHalf(half, characters)), wide, units + blockChars / 2);
}

/// Leaves less than a block, and bytes enough to read whole blocks.
template <typename Char>
HWY_ATTR HWY_INLINE void encodeBlocks(const uchar *&bytes, std::size_t &size, Char *&text)
{
    for (; size >= blockReads; bytes += blockBytes, size -= blockBytes, text += blockChars)
        store(characters(values(load(bytes))), text);
}

#else

template <typename Char>
void encodeBlocks(const uchar *, std::size_t, Char *)
{}

#endif

template <typename Char>
HWY_ATTR HWY_INLINE void encodeGroup(quint32 bits, Char *text)
{
    for (int i = 0; i < 4; ++i)
        text[i] = Char(_base64EncodingTable[bits >> (18 - 6 * i) & 63]);
}

template <typename Char>
HWY_ATTR HWY_INLINE void encode(const uchar *bytes, std::size_t size, Char *text)
{
    encodeBlocks(bytes, size, text);
    for (; size >= 3; bytes += 3, size -= 3, text += 4)
        encodeGroup(quint32(bytes[0]) << 16 | quint32(bytes[1]) << 8 | bytes[2], text);
    if (size == 0)
        return;
    encodeGroup(quint32(bytes[0]) << 16 | (size == 2 ? quint32(bytes[1]) << 8 : 0), text);
    text[3] = Char('=');
    if (size == 1)
        text[2] = Char('=');
}

#endif

} // namespace

HWY_ATTR void encodeToBytes(const uchar *bytes, std::size_t size, uchar *text) { encode(bytes, size, text); }
HWY_ATTR void encodeToText(const uchar *bytes, std::size_t size, char16_t *text) { encode(bytes, size, text); }

} // namespace dravelin::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace dravelin::detail {

HWY_EXPORT(encodeToBytes);
HWY_EXPORT(encodeToText);

void encodeBase64(const uchar *bytes, std::size_t size, uchar *text)
{
    HWY_DYNAMIC_DISPATCH(encodeToBytes)(bytes, size, text);
}

void encodeBase64(const uchar *bytes, std::size_t size, char16_t *text)
{
    HWY_DYNAMIC_DISPATCH(encodeToText)(bytes, size, text);
}

} // namespace dravelin::detail
#endif
