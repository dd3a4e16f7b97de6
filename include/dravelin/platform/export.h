// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#if defined(__cplusplus) && __cplusplus <= 201703L
#error "Dravelin needs C++20: -std=c++20"
#endif

#include <QtCore/qglobal.h>

#ifdef DRAVELIN_BUILD
#define DRAVELIN_EXPORT Q_DECL_EXPORT
#else
#define DRAVELIN_EXPORT Q_DECL_IMPORT
#endif
