// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QString>

/// An exported preference text taken apart step by step, for a reader.
[[nodiscard]] QString decodedExport(const QString &text);
