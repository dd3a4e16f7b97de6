// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/utf8text.h>

#include <platform/utf8pieces.h>

#include <QtCore/QStringConverter>

#include <algorithm>

#define HWY_WANT_AVX3_DL
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/utf8text.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h comes first.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace dravelin::detail::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

namespace {

using D = hn::ScalableTag<int16_t>;
using V = hn::Vec<D>;
using M = hn::Mask<D>;

/// What the bytes of a block become: one unit in the lane of a character's last byte, or two in those of its third and
/// fourth. Every lane looks back at the bytes ahead of it, so that nothing is carried from block to block.
struct Block
{
    V units;
    M isUnit;
    M mustContinue;
    M isBad; ///< a character that is longer than it needs to be, or none
};

HWY_ATTR HWY_INLINE V load(const uint8_t *bytes)
{
    return hn::PromoteTo(D(), hn::LoadU(hn::Rebind<uint8_t, D>(), bytes));
}

HWY_ATTR HWY_INLINE V same(int value) { return hn::Set(D(), int16_t(value)); }

HWY_ATTR HWY_INLINE M isAbove(V bytes, int value) { return hn::Gt(bytes, same(value)); }

HWY_ATTR HWY_INLINE M has(V units, int bits, int value) { return hn::Eq(hn::And(units, same(bits)), same(value)); }

/// Characters of one and of two bytes.
/// \param low what the last two bytes bring to a character
HWY_ATTR HWY_INLINE Block shortBlock(V byte1, V byte, V low)
{
    const M leads = isAbove(byte1, 0xBF);
    return {hn::IfThenElse(isAbove(byte, 0x7F), low, byte), hn::Not(isAbove(byte, 0xBF)), leads,
            hn::And(leads, has(low, 0xFF80, 0))};
}

/// Those of three and of four bytes too.
/// \param byte3,byte2,byte1 the bytes so many places ahead
HWY_ATTR HWY_INLINE Block longBlock(V byte3, V byte2, V byte1, V byte, V low)
{
    const M isThird = isAbove(byte2, 0xDF), ofFour = isAbove(byte2, 0xEF), isFourth = isAbove(byte3, 0xEF);
    const V unit = hn::Or(hn::ShiftLeft<12>(byte2), low);
    const V high = hn::Add(hn::Add(hn::ShiftLeft<8>(hn::And(byte2, same(0xF))), hn::ShiftRight<4>(low)), same(0xD7C0));
    const M badUnit = hn::Or(has(unit, 0xF800, 0), has(unit, 0xF800, 0xD800));
    const M badHigh = hn::Not(has(high, 0xFC00, 0xD800));

    Block block = shortBlock(byte1, byte, low);
    block.units = hn::IfThenElse(isThird, hn::IfThenElse(ofFour, high, unit), block.units);
    block.units = hn::IfThenElse(isFourth, hn::Or(hn::And(low, same(0x3FF)), same(0xDC00)), block.units);
    block.isUnit = hn::AndNot(isAbove(byte1, 0xDF), block.isUnit);
    block.mustContinue = hn::Or(block.mustContinue, hn::Or(isThird, isFourth));
    block.isBad = hn::Or(block.isBad, hn::And(ofFour, badHigh));
    block.isBad = hn::Or(block.isBad, hn::And(hn::AndNot(ofFour, isThird), badUnit));
    return block;
}

HWY_ATTR HWY_INLINE Block convertBlock(const uint8_t *bytes, V byte3, V byte)
{
    const V byte1 = load(bytes - 1);
    const V low = hn::Or(hn::ShiftLeft<6>(hn::And(byte1, same(0x3F))), hn::And(byte, same(0x3F)));
    if (hn::AllFalse(D(), isAbove(hn::Or(byte3, byte), 0xDF)))
        return shortBlock(byte1, byte, low);
    return longBlock(byte3, load(bytes - 2), byte1, byte, low);
}

HWY_ATTR HWY_INLINE void store(V units, uint16_t *text)
{
    const hn::RebindToUnsigned<D> unsignedUnits;
    hn::StoreU(hn::BitCast(unsignedUnits, units), unsignedUnits, text);
}

} // namespace

/// Converts whole blocks while they are valid.
/// \param used how many bytes have been converted, at least 3, and then how many
/// \return how many units there are
HWY_ATTR std::size_t convertBlocks(const uint8_t *bytes, std::size_t size, std::size_t &used, uint16_t *text)
{
    const std::size_t lanes = hn::Lanes(D());
    std::size_t written = 0;
    for (; lanes >= 4 && used + lanes <= size; used += lanes) {
        const V byte = load(bytes + used), byte3 = load(bytes + used - 3);
        if (hn::AllFalse(D(), isAbove(hn::Or(byte3, byte), 0x7F))) {
            store(byte, text + written);
            written += lanes;
            continue;
        }
        const Block block = convertBlock(bytes + used, byte3, byte);
        const M continues = hn::AndNot(isAbove(byte, 0xBF), isAbove(byte, 0x7F));
        if (!hn::AllFalse(D(), hn::Or(block.isBad, hn::Xor(block.mustContinue, continues))))
            break;
        store(hn::Compress(block.units, block.isUnit), text + written);
        written += hn::CountTrue(D(), block.isUnit);
    }
    return written;
}

} // namespace dravelin::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace dravelin::detail {

HWY_EXPORT(convertBlocks);

namespace {

/// \return how many units, or -1
qsizetype convertByQt(QByteArrayView bytes, QChar *text)
{
    using Flag = QStringConverter::Flag;
    QStringDecoder decoder(QStringConverter::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    const QChar *end = decoder.appendToBuffer(text, bytes);
    return decoder.hasError() ? -1 : end - text;
}

/// How many bytes the first characters have, so that there are three to look back at: 3 to 6, or all.
qsizetype beginning(QByteArrayView bytes)
{
    qsizetype length = std::min<qsizetype>(3, bytes.size());
    while (length < std::min<qsizetype>(6, bytes.size()) && (uchar(bytes[length]) & 0xC0) == 0x80)
        ++length;
    return length;
}

} // namespace

qsizetype utf8ToUtf16(QByteArrayView bytes, QChar *text)
{
    auto used = std::size_t(beginning(bytes));
    qsizetype written = convertByQt(bytes.first(qsizetype(used)), text);
    if (written < 0)
        return -1;
    written += qsizetype(HWY_DYNAMIC_DISPATCH(convertBlocks)(reinterpret_cast<const uint8_t *>(bytes.data()),
                                                             std::size_t(bytes.size()), used,
                                                             reinterpret_cast<uint16_t *>(text + written)));
    const qsizetype cut = cutCharacter(bytes.first(qsizetype(used)));
    if (cut == 3)
        --written; // the first half of a pair
    const qsizetype rest = convertByQt(bytes.sliced(qsizetype(used) - cut), text + written);
    return rest < 0 ? -1 : written + rest;
}

} // namespace dravelin::detail
#endif
