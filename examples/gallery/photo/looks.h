// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/imaging.h>

#include <QtCore/QList>
#include <QtGui/QImage>

/// A filter of the catalogue, made with values that show what it does.
struct CatalogueEntry
{
    const char *name; ///< the display name
    std::shared_ptr<dravelin::ImageFilter> (*make)(const QImage &second);
    bool isLook; ///< without anything to set
};

/// All of it, in the catalogue's order. Some take a second picture.
const QList<CatalogueEntry> &wholeCatalogue();

/// A photograph of the system, or a picture made up where there is none.
QImage somePhoto(QString *name = nullptr);

/// Shades from black to white, from left to right.
QImage rampImage(const QSize &size);
