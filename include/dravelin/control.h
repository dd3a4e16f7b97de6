// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Control flow: observation proxies.

#include <dravelin/control/proxies.h>
