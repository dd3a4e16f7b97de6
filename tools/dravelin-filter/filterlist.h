// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QString>

/// Every filter with its inputs, a line each, and what is published about those.
QString filterList();
