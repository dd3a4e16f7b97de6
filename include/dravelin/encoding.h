// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Bytes as text, arrays of plain numbers, and helpers for lists, text, maps and bytes.

#include <dravelin/encoding/base64.h>
#include <dravelin/encoding/collections.h>
#include <dravelin/encoding/nativearray.h>
