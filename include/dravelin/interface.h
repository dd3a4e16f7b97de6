// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Tables of real widgets, views in a column, screens, keyboard and mouse.

#include <dravelin/interface/input.h>
#include <dravelin/interface/screens.h>
#include <dravelin/interface/stackview.h>
#include <dravelin/interface/tableutilities.h>
#include <dravelin/interface/tableviewhandler.h>
#include <dravelin/platform/outlineview.h>
#include <dravelin/platform/tableview.h>
