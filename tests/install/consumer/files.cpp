// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/files.h>

void useFiles() {}
