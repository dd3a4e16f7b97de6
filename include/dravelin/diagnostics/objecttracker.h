// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>

/// \file
/// Finds leaks: register objects as they are created, and see per class how many of them still live.
///
///     dravelin::_initializeObjectTracker();
///     dravelin::_trackObject(document);       // in the constructor of whatever is suspected
///     dravelin::_takeSnapCount();             // before the suspected action
///     dravelin::console(dravelin::_dumpTrackedObjects());     // afterwards: "Document - Snap:3 Count:2 Delta:-1\r"
///
/// The tracker is off until it is initialised, and then on for the life of the process. It keeps no object alive. Call
/// it from one thread; the objects may be destroyed on any.

namespace dravelin {

/// A registered object.
struct DebugObjectTracker
{
    QPointer<QObject> object; ///< null once the object is gone
};

/// All registered objects of one class. An object counts from its registration until trimObjects() finds it gone.
class DRAVELIN_EXPORT DebugObjectContainer
{
public:
    /// By the low 32 bits of the object's address, as a signed integer.
    using Lookup = QHash<qint32, DebugObjectTracker>;

    /// \operation{objectLookup}
    [[nodiscard]] const Lookup &objectLookup() const noexcept { return m_objectLookup; }
    /// \operation{setObjectLookup:}
    void setObjectLookup(const Lookup &lookup) { m_objectLookup = lookup; }
    /// How many there were at the last snapshot; 0 at first.
    /// \operation{snapShotCount}
    [[nodiscard]] qint64 snapShotCount() const noexcept { return m_snapShotCount; }
    /// \operation{setSnapShotCount:}
    void setSnapShotCount(qint64 count) noexcept { m_snapShotCount = count; }

    /// Registers an object, in place of one whose address has the same low 32 bits. The same object counts once.
    /// \operation{addObject:}
    void addObject(QObject *object);
    /// Trims, and remembers the count.
    /// \operation{takeSnapShotCount}
    void takeSnapShotCount();
    /// Forgets the objects that are gone.
    /// \operation{trimObjects}
    void trimObjects();
    /// One line without line end, such as "Document - Snap:3 Count:2 Delta:-1". It does not trim: objects gone since
    /// the last time still count. The class is that of one of the objects, "(null)" when that one is gone.
    /// \operation{report}
    [[nodiscard]] QString report() const;

private:
    Lookup m_objectLookup;
    qint64 m_snapShotCount = 0;
};

/// Switches the tracker on; once on, it stays as it is.
/// \operation{_initializeObjectTracker}
DRAVELIN_EXPORT void _initializeObjectTracker();

/// Forgets all objects and snapshots. The tracker stays on.
/// \operation{_clearTrackedObjects}
DRAVELIN_EXPORT void _clearTrackedObjects();

/// Registers an object under the class that it has now: in a constructor, the class of that constructor. Does nothing
/// while the tracker is off, and for no object.
/// \operation{_trackObject}
DRAVELIN_EXPORT void _trackObject(QObject *object);

/// Forgets the objects that are gone, and classes without objects together with their snapshots.
/// \cost linear in the number of registered objects
/// \operation{_trimObjectList}
DRAVELIN_EXPORT void _trimObjectList();

/// Trims, and remembers each class's count for later reports to compare with.
/// \operation{_takeSnapCount}
DRAVELIN_EXPORT void _takeSnapCount();

/// Trims, and reports each class in a line ended by a carriage return: how many objects there were at the last
/// snapshot, how many there are, and the difference. Empty when no object lives; "No class list." while the tracker is
/// off.
/// \operation{_dumpTrackedObjects}
[[nodiscard]] DRAVELIN_EXPORT QString _dumpTrackedObjects();

} // namespace dravelin
