// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace dravelin::detail {

/// What assistive software says for a view that may consist of several: its accessible name, or else those of the views in
/// it and what they are set to, hidden ones left out.
[[nodiscard]] QString readOut(QWidget &view);

} // namespace dravelin::detail
