// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QString>

#include <memory>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace dravelin {

/// The widget that the interface file "name.ui" describes, found as Bundle::pathForResource() does or, when there is no
/// such file or it cannot be used, among the library's own.
/// \return empty without a QApplication or a usable file; the log names file and cause
[[nodiscard]] std::unique_ptr<QWidget> loadInterfaceFile(const QString &name);

/// The widget that the interface file at the path describes, which may be one of the application's resources.
/// \return empty when it cannot be used; the log names file and cause
[[nodiscard]] std::unique_ptr<QWidget> loadInterfaceFileAt(const QString &path);

} // namespace dravelin
