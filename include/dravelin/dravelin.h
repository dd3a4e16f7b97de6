// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Everything of the library in one include. The header of a single subsystem compiles faster.

#include <dravelin/version.h>

#include <dravelin/platform/exception.h>
#include <dravelin/platform/export.h>
#include <dravelin/platform/log.h>
#include <dravelin/platform/object.h>

#if __has_include(<dravelin/platform.h>)
#include <dravelin/platform.h>
#endif
#if __has_include(<dravelin/values.h>)
#include <dravelin/values.h>
#endif
#if __has_include(<dravelin/encoding.h>)
#include <dravelin/encoding.h>
#endif
#if __has_include(<dravelin/control.h>)
#include <dravelin/control.h>
#endif
#if __has_include(<dravelin/preferences.h>)
#include <dravelin/preferences.h>
#endif
