// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

// A small application as its author would write it: only installed headers, only what Dravelin's target brings along. It uses
// every public operation once; each subsystem is a file with one function.

void usePlatform();
void useValues();
void useEncoding();
void useDiagnostics();
void useControl();
void usePreferences();
void useImaging();
void useSound();
void useInterface();
void useFiles();

/// Ends the program.
void fail(const char *file, int line, const char *condition);

#define CHECK(condition) ((condition) ? void() : fail(__FILE__, __LINE__, #condition))
