// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QtGlobal>

#include <cstdlib>
#include <memory>
#include <span>

namespace dravelin {

/// A pixel and its alpha sample.
struct AlphaEntry
{
    qint64 x;
    qint64 y;
    quint64 alpha; ///< 0 to 254 as ImageOverlay lists them

    friend bool operator==(const AlphaEntry &, const AlphaEntry &) = default;
};

/// A growable list of pixels in one plain buffer, which may be handed to other code as it is.
///
///     dravelin::PixelList list;
///     list.addPixelX(3, 4, 128);
///     for (const dravelin::AlphaEntry &entry : list)
///         qInfo() << entry.x << entry.y << entry.alpha;
///
/// The buffer never has spare room: each operation that adds reallocates it. Pointers and iterators are valid until
/// then. The list can be moved, not copied, and is used by one thread at a time.
class DRAVELIN_EXPORT PixelList
{
public:
    using value_type = AlphaEntry;
    using const_iterator = const AlphaEntry *;

    /// No entries and no buffer.
    /// \operation{init}
    PixelList() noexcept = default;
    /// Leaves the other list without entries and buffer.
    PixelList(PixelList &&other) noexcept;
    PixelList &operator=(PixelList &&other) noexcept;
    /// Frees the buffer.
    /// \operation{dealloc}
    ~PixelList() = default;

    /// The number of entries.
    /// \operation{pixelCount}
    [[nodiscard]] qint64 pixelCount() const noexcept { return m_pixelCount; }
    /// The first entry, of a buffer that stays the list's; null while there is none.
    /// \operation{alphaEntries}
    [[nodiscard]] AlphaEntry *alphaEntries() noexcept { return m_alphaEntries.get(); }
    [[nodiscard]] const AlphaEntry *alphaEntries() const noexcept { return m_alphaEntries.get(); }

    /// Adds an entry at the end. Entries are neither looked at nor sorted.
    /// \throws Exception NSMallocException when there is not so much memory; the list is then as before
    /// \cost a reallocation by one entry, which in general moves nothing
    /// \operation{addPixelX:y:alpha:}
    void addPixelX(qint64 x, qint64 y, quint64 alpha);

    /// Adds that many entries at the end by one reallocation; they are indeterminate, to be filled in by the caller.
    /// \param count less than one adds nothing
    /// \throws Exception NSMallocException; the list is then as before
    std::span<AlphaEntry> addPixels(qint64 count);

    [[nodiscard]] const AlphaEntry *begin() const noexcept { return m_alphaEntries.get(); }
    [[nodiscard]] const AlphaEntry *end() const noexcept { return begin() + m_pixelCount; }

private:
    struct Free
    {
        void operator()(AlphaEntry *entries) const noexcept { std::free(entries); }
    };

    qint64 m_pixelCount = 0;
    std::unique_ptr<AlphaEntry, Free> m_alphaEntries;
};

} // namespace dravelin
