// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/base64.h>

#include <dravelin/values/conversions.h>

#include <encoding/base64_reference.h>

namespace dravelin {

QString encodeBase64WithData(const QByteArray &data) { return detail::encodeBase64Reference(data); }

QString encodeBase64WithString(const QString &text) { return encodeBase64WithData(strToData(text)); }

QByteArray decodeBase64ToData(const QString &text) { return detail::decodeBase64Reference(text); }

QString decodeBase64ToString(const QString &text) { return dataToStr(decodeBase64ToData(text)); }

} // namespace dravelin
