// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Bytes as text, fields of archives, and helpers for lists, text, maps and bytes.

#include <dravelin/encoding/base64.h>
#include <dravelin/encoding/coder.h>
#include <dravelin/encoding/collections.h>
