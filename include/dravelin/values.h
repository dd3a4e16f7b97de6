// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Text forms of values and back.

#include <dravelin/values/conversions.h>
#include <dravelin/values/decimal.h>
