// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/exception.h>

#include <execinfo.h>

#include <utility>

namespace dravelin {

namespace {

QList<quintptr> returnAddresses()
{
    void *frames[130];
    const int count = backtrace(frames, 130);
    QList<quintptr> addresses;
    // The first two are this function and the constructor.
    for (int i = 2; i < count; ++i)
        addresses.append(reinterpret_cast<quintptr>(frames[i]));
    return addresses;
}

} // namespace

Exception::Exception(QString name, QString reason, QVariantMap userInfo)
    : m_name(std::move(name)),
      m_reason(std::move(reason)),
      m_userInfo(std::move(userInfo)),
      m_callStack(returnAddresses()),
      m_what(m_reason.isEmpty() ? m_name.toUtf8() : (m_name + QLatin1String(": ") + m_reason).toUtf8())
{}

Exception::~Exception() = default;

} // namespace dravelin
