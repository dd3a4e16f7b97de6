// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/imaging/filterprocessor.h>

#include <QtCore/QStringList>

class QCommandLineParser;

/// A picture's way from file to file.
struct Job
{
    QString input, output;
};

/// Describes the command's options.
void addOptions(QCommandLineParser &parser);

/// The chain of --chain, with the filters of each --filter behind it.
/// \throws Failure
dravelin::FilterProcessor chainFrom(const QCommandLineParser &parser);

/// What --output makes of the files named: a file for one picture, files of the same names in a folder for several.
/// \throws Failure when there is nothing to do, or files would overwrite each other or themselves
QList<Job> jobsFrom(const QCommandLineParser &parser);

/// \return -1 when it is not given
/// \throws Failure
int qualityFrom(const QCommandLineParser &parser);
