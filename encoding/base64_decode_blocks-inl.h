// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Decoding with 16-byte lookups, or without vectors.
// Part of base64_decode_kernels.cpp, within its namespace for each kind of vectors.

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

template <bool = false, std::size_t Blocks>
HWY_ATTR HWY_INLINE void store(const Vector (&values)[Blocks], const Decoder &decoder, uchar *out)
{
    for (std::size_t i = 0; i < Blocks; ++i)
        store(values[i], decoder, out + i * blockBytes);
}

#else

constexpr std::size_t blockChars = 16;

struct Decoder
{};

HWY_ATTR HWY_INLINE Decoder makeDecoder() { return {}; }

#endif

template <typename Char>
HWY_ATTR HWY_INLINE void decodeRest(Base64Cursor<Char> &cursor, const Decoder &)
{
    while (cursor.end - cursor.in >= 4 && decodeBase64Group(cursor.in, cursor.out)) {
        cursor.in += 4;
        cursor.out += 3;
    }
}
