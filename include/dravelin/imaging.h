// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Chains of filters over pictures, and overlays that keep a picture's transparency.

#include <dravelin/imaging/filtercatalogue.h>
#include <dravelin/imaging/filterprocessor.h>
#include <dravelin/imaging/filterutilities.h>
#include <dravelin/imaging/imageoverlay.h>
#include <dravelin/imaging/imagetints.h>
#include <dravelin/imaging/pixellist.h>
#include <dravelin/platform/filterdescription.h>
#include <dravelin/platform/filterimage.h>
#include <dravelin/platform/filterkeys.h>
#include <dravelin/platform/image.h>
#include <dravelin/platform/imagefilter.h>
#include <dravelin/platform/imagefocus.h>
#include <dravelin/platform/imagerep.h>
#include <dravelin/platform/pixelkernel.h>
