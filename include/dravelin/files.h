// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Files that the user chose, found again; shell commands, notifications, the application's version.

#include <dravelin/files/notifications.h>
#include <dravelin/platform/bookmarks.h>
