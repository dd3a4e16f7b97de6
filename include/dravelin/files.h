// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Files that the user chose, found again; shell commands, notifications, the application's version.

#include <dravelin/files/buildidentity.h>
#include <dravelin/files/notifications.h>
#include <dravelin/files/securityscopedbookmark.h>
#include <dravelin/files/shellcommand.h>
#include <dravelin/files/systemservices.h>
#include <dravelin/platform/bookmarks.h>
