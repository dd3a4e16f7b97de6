// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/selector.h>

#include "platform/selector_record.h"

#include <QtCore/QHash>

#include <mutex>

namespace dravelin {

namespace detail {

namespace {

// Records live as long as the process: selectors are plain pointers to them.
SelectorRecord *intern(const QByteArray &name)
{
    static std::mutex mutex;
    static auto *records = new QHash<QByteArray, SelectorRecord *>;
    const std::lock_guard lock(mutex);
    SelectorRecord *&record = (*records)[name];
    if (!record)
        record = new SelectorRecord(name);
    return record;
}

} // namespace

SelectorRecord::SelectorRecord(const QByteArray &text)
    : name(text),
      function(text.contains(':') ? text.first(text.indexOf(':')) : text),
      argumentCount(int(text.count(':')))
{}

} // namespace detail

Selector::Selector(const char *name) : m_record(name && *name ? detail::intern(QByteArray(name)) : nullptr) {}

Selector::Selector(const QString &name) : m_record(name.isEmpty() ? nullptr : detail::intern(name.toUtf8())) {}

QString Selector::name() const { return m_record ? QString::fromUtf8(m_record->name) : QString(); }

int Selector::argumentCount() const noexcept { return m_record ? m_record->argumentCount : 0; }

} // namespace dravelin
