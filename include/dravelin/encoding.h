// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Bytes as text, compressed and as XML, fields of archives, arrays of plain numbers, and helpers for lists, text, maps and
/// bytes.

#include <dravelin/encoding/base64.h>
#include <dravelin/encoding/coder.h>
#include <dravelin/encoding/collections.h>
#include <dravelin/encoding/compression.h>
#include <dravelin/encoding/dataencoder.h>
#include <dravelin/encoding/nativearray.h>
#include <dravelin/encoding/xml.h>
#include <dravelin/encoding/xmlcontentparser.h>
