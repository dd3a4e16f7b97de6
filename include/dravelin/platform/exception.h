// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <exception>

namespace dravelin {

/// What the library throws when a call cannot have a result at all: an unknown property name, an index outside its
/// list. Ordinary failures are not thrown; they give absent results.
///
///     try {
///         dravelin::setValue(settings, 2.0, "zoom");
///     } catch (const dravelin::Exception &e) {
///         qWarning() << e.name() << e.reason();
///     }
class DRAVELIN_EXPORT Exception : public std::exception
{
public:
    /// \param name one of the names below, or one of the application's own
    /// \param reason a sentence for whoever debugs
    ///
    /// The call stack is that of the constructor's caller.
    explicit Exception(QString name, QString reason = {}, QVariantMap userInfo = {});
    Exception(const Exception &) = default;
    Exception &operator=(const Exception &) = default;
    ~Exception() override;

    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] QString reason() const { return m_reason; }
    [[nodiscard]] QVariantMap userInfo() const { return m_userInfo; }

    /// The return addresses on the stack where the exception was made, innermost first; at most 128.
    [[nodiscard]] QList<quintptr> callStackReturnAddresses() const { return m_callStack; }

    /// "name: reason" in UTF-8.
    [[nodiscard]] const char *what() const noexcept override { return m_what.constData(); }

private:
    QString m_name;
    QString m_reason;
    QVariantMap m_userInfo;
    QList<quintptr> m_callStack;
    QByteArray m_what;
};

/// \name Names of the platform's exceptions
/// @{
inline constexpr char NSInternalInconsistencyException[] = "NSInternalInconsistencyException";
inline constexpr char NSInvalidArgumentException[] = "NSInvalidArgumentException";
inline constexpr char NSMallocException[] = "NSMallocException";
inline constexpr char NSRangeException[] = "NSRangeException";
inline constexpr char NSUndefinedKeyException[] = "NSUndefinedKeyException";
/// @}

} // namespace dravelin
