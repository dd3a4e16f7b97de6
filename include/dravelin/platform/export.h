// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qglobal.h>

#ifdef DRAVELIN_BUILD
#define DRAVELIN_EXPORT Q_DECL_EXPORT
#else
#define DRAVELIN_EXPORT Q_DECL_IMPORT
#endif
