// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Decoding with AVX-512 and its permutations of bytes.
// Part of base64_decode_kernels.cpp, within its namespace for each kind of vectors.

constexpr std::size_t blockChars = 64;
constexpr std::size_t blockBytes = 48;

using Vector = __m512i;

struct Decoder
{
    Vector lower, upper; ///< the values of the ASCII characters, 0x80 for what is none
    Vector pack[4]; ///< picks the three bytes of each group, rotated to where those of four blocks lie side by side
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
        std::array<uint8_t, 256> order{};
        for (uint8_t i = 0; i < 4 * blockBytes; ++i) {
            const uint8_t block = i / blockBytes, byte = i % blockBytes;
            order[block * 64 + i % 64] = uint8_t(byte / 3 * 4 + 2 - byte % 3);
        }
        return order;
    }();
    Decoder decoder{_mm512_load_si512(values.data()), _mm512_load_si512(values.data() + 64), {}};
    for (int i = 0; i < 4; ++i)
        decoder.pack[i] = _mm512_load_si512(pack.data() + 64 * i);
    return decoder;
}

HWY_ATTR HWY_INLINE Vector load(const uchar *text) { return _mm512_loadu_si512(text); }

/// A character beyond 255 becomes one that is not of the alphabet.
HWY_ATTR HWY_INLINE Vector narrow(Vector first, Vector second)
{
    return _mm512_inserti64x4(_mm512_castsi256_si512(_mm512_cvtusepi16_epi8(first)), _mm512_cvtusepi16_epi8(second), 1);
}

HWY_ATTR HWY_INLINE Vector load(const char16_t *text)
{
    return narrow(_mm512_loadu_si512(text), _mm512_loadu_si512(text + 32));
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
    return narrow(first, second);
}

/// The characters at `text`, but where a bit is set those at `further`.
HWY_ATTR HWY_INLINE Vector loadJoined(const uchar *text, const uchar *further, quint64 which)
{
    return _mm512_mask_loadu_epi8(load(text), which, further);
}

HWY_ATTR HWY_INLINE Vector loadJoined(const char16_t *text, const char16_t *further, quint64 which)
{
    const __m512i first = _mm512_mask_loadu_epi16(_mm512_loadu_si512(text), __mmask32(which), further);
    const __m512i second = _mm512_mask_loadu_epi16(_mm512_loadu_si512(text + 32), __mmask32(which >> 32), further + 32);
    return narrow(first, second);
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

/// The 24 bits of each group of four values.
HWY_ATTR HWY_INLINE Vector groups(Vector values)
{
    const Vector pairs = _mm512_maddubs_epi16(values, _mm512_set1_epi32(0x01400140));
    return _mm512_madd_epi16(pairs, _mm512_set1_epi32(0x00011000));
}

template <bool = false>
HWY_ATTR HWY_INLINE void store(const Vector (&values)[1], const Decoder &decoder, uchar *out)
{
    _mm512_storeu_si512(out, _mm512_permutexvar_epi8(decoder.pack[0], groups(values[0])));
}

/// The bytes of block `First` from where they begin in a vector, and behind them those of the next block.
template <int First>
HWY_ATTR HWY_INLINE Vector joined(const Decoder &decoder, Vector first, Vector second)
{
    constexpr auto behind = ~__mmask64(0) << (blockBytes - 16 * First);
    const Vector bytes = _mm512_permutexvar_epi8(decoder.pack[First], first);
    return _mm512_mask_permutexvar_epi8(bytes, behind, decoder.pack[First + 1], second);
}

template <bool PastCaches>
HWY_ATTR HWY_INLINE void write(uchar *out, Vector bytes)
{
    if constexpr (PastCaches)
        _mm512_stream_si512(reinterpret_cast<__m512i *>(out), bytes);
    else
        _mm512_storeu_si512(out, bytes);
}

/// The bytes of four blocks as three vectors.
/// \tparam PastCaches wants `out` aligned to vectors
template <bool PastCaches = false>
HWY_ATTR HWY_INLINE void store(const Vector (&values)[4], const Decoder &decoder, uchar *out)
{
    const Vector second = groups(values[1]), third = groups(values[2]);
    write<PastCaches>(out, joined<0>(decoder, groups(values[0]), second));
    write<PastCaches>(out + 64, joined<1>(decoder, second, third));
    write<PastCaches>(out + 128, joined<2>(decoder, third, groups(values[3])));
}

/// The characters before the padding at the end of a text, where it is as it should be.
template <typename Char>
HWY_ATTR HWY_INLINE std::size_t withoutPadding(const Char *text, std::size_t size)
{
    const bool two = size >= 4 && text[size - 1] == '=' && text[size - 2] == '=' && size % 4 == 0;
    return two ? size - 2 : size >= 4 && text[size - 1] == '=' && size % 4 == 0 ? size - 1 : size;
}

/// Less than a block, all of it when nothing but padding follows the alphabet's characters; else the groups before.
template <typename Char>
HWY_ATTR HWY_INLINE void decodeRest(Base64Cursor<Char> &cursor, const Decoder &decoder)
{
    const auto size = std::min(std::size_t(cursor.end - cursor.in), blockChars);
    const bool isLast = cursor.isWholeText && cursor.in + size == cursor.end;
    const std::size_t taken = isLast ? withoutPadding(cursor.in, size) : size / 4 * 4;
    if (taken == 0)
        return;
    Vector fault = noFault();
    const Vector part = values(decoder, loadPart(cursor.in, ~quint64(0) >> (64 - taken)), fault);
    const quint64 faults = _mm512_movepi8_mask(fault);
    const std::size_t valid = faults == 0 ? taken : std::size_t(std::countr_zero(faults)) / 4 * 4;
    _mm512_mask_storeu_epi8(cursor.out, (quint64(1) << valid * 3 / 4) - 1,
                            _mm512_permutexvar_epi8(decoder.pack[0], groups(part)));
    cursor.in += faults == 0 && isLast ? size : valid;
    cursor.out += valid * 3 / 4;
}

/// Fetches what is to be read soon: the processor itself does not look beyond a page.
template <typename Char>
HWY_ATTR HWY_INLINE void fetchAhead(const Char *text)
{
    const char *const ahead = reinterpret_cast<const char *>(text) + 4096;
    for (std::size_t i = 0; i < 4 * blockChars * sizeof(Char); i += 64)
        _mm_prefetch(ahead + i, _MM_HINT_T0);
}

/// A block may begin in one line and end in the next.
template <typename Char, typename Separator>
HWY_ATTR HWY_INLINE Vector nextBlock(Lines<Char, Separator> &lines)
{
    const std::size_t rest = lines.length - lines.column;
    const quint64 beyond = rest < blockChars ? ~quint64(0) << rest : 0;
    const Vector block = loadJoined(lines.in, lines.in + Separator(), beyond);
    const bool isNext = rest <= blockChars;
    lines.difference |= isNext ? difference(lines.in + rest, lines.separator, Separator()) : 0;
    lines.in += blockChars + (isNext ? Separator() : 0);
    lines.column += blockChars - (isNext ? lines.length : 0);
    return block;
}

template <bool PastCaches = false, typename Char, typename Separator>
HWY_ATTR HWY_INLINE void decodeFourBlocks(const Decoder &decoder, Lines<Char, Separator> &lines, uchar *out,
                                          Vector &fault)
{
    if constexpr (PastCaches)
        fetchAhead(lines.in);
    Vector block[4];
    for (Vector &each : block)
        each = values(decoder, nextBlock(lines), fault);
    store<PastCaches>(block, decoder, out);
}

template <typename Char, typename Separator>
HWY_ATTR HWY_INLINE bool decodeManyLines(const Decoder &decoder, Lines<Char, Separator> lines, uchar *out)
{
    Vector fault = noFault();
    std::size_t blocks = manyLines * lines.length / blockChars;
    for (; blocks >= 4; blocks -= 4, out += 4 * blockBytes)
        decodeFourBlocks(decoder, lines, out, fault);
    for (; blocks > 0; --blocks, out += blockBytes)
        store({values(decoder, nextBlock(lines), fault)}, decoder, out);
    return !isFault(fault) && lines.difference == 0;
}

/// Groups of three bytes up to where the memory is aligned to vectors: 43 is the inverse of 3 modulo 64.
inline std::size_t groupsToAlignment(const uchar *out) { return (-reinterpret_cast<quintptr>(out) & 63) * 43 & 63; }

template <typename Char, typename Separator>
HWY_ATTR HWY_INLINE Lines<Char, Separator> skipped(Lines<Char, Separator> lines, std::size_t characters)
{
    const std::size_t place = lines.column + characters;
    lines.in += characters + place / lines.length * Separator();
    lines.column = place % lines.length;
    return lines;
}

/// Past the caches, but for the first and the last four blocks, which others may overlap.
template <typename Char, typename Separator>
HWY_ATTR HWY_INLINE bool decodeVeryManyLines(const Decoder &decoder, Lines<Char, Separator> lines, uchar *out)
{
    constexpr std::size_t chars = 4 * blockChars, bytes = 4 * blockBytes;
    const std::size_t size = veryManyLines * lines.length, groups = groupsToAlignment(out);
    Vector fault = noFault();
    Lines<Char, Separator> first = lines, last = skipped(lines, size - chars);
    decodeFourBlocks(decoder, first, out, fault);
    lines = skipped(lines, 4 * groups);
    for (std::size_t done = 4 * groups; done + chars <= size; done += chars)
        decodeFourBlocks<true>(decoder, lines, out + done / 4 * 3, fault);
    decodeFourBlocks(decoder, last, out + size / 4 * 3 - bytes, fault);
    return !isFault(fault) && (first.difference | lines.difference | last.difference) == 0;
}
