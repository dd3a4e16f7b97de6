// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// What stands under all subsystems: objects, calls by name, observation, notifications, timers, the settings store,
/// archives, XML, colours, images, frames and interface files, undo.

#include <dravelin/platform/action.h>
#include <dravelin/platform/bookmarks.h>
#include <dravelin/platform/bundle.h>
#include <dravelin/platform/coding.h>
#include <dravelin/platform/color.h>
#include <dravelin/platform/display.h>
#include <dravelin/platform/event.h>
#include <dravelin/platform/exception.h>
#include <dravelin/platform/frame.h>
#include <dravelin/platform/geometry.h>
#include <dravelin/platform/image.h>
#include <dravelin/platform/imagefocus.h>
#include <dravelin/platform/imagerep.h>
#include <dravelin/platform/indexset.h>
#include <dravelin/platform/inputstate.h>
#include <dravelin/platform/interfacefile.h>
#include <dravelin/platform/keyedarchiver.h>
#include <dravelin/platform/keyedunarchiver.h>
#include <dravelin/platform/keyvalue.h>
#include <dravelin/platform/log.h>
#include <dravelin/platform/notificationcenter.h>
#include <dravelin/platform/object.h>
#include <dravelin/platform/outlineview.h>
#include <dravelin/platform/pasteboarditem.h>
#include <dravelin/platform/propertylist.h>
#include <dravelin/platform/range.h>
#include <dravelin/platform/selector.h>
#include <dravelin/platform/sounddata.h>
#include <dravelin/platform/soundoutput.h>
#include <dravelin/platform/soundplayer.h>
#include <dravelin/platform/tableview.h>
#include <dravelin/platform/tableviewdelegate.h>
#include <dravelin/platform/timer.h>
#include <dravelin/platform/undomanager.h>
#include <dravelin/platform/userdefaults.h>
#include <dravelin/platform/usernotifications.h>
#include <dravelin/platform/xml.h>
