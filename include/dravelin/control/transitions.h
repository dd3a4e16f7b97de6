// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace dravelin {

/// One thing that a state machine did.
struct StateTransition
{
    enum Kind {
        Change, ///< entered `to` on request; its set-up follows after `delay`
        Direct, ///< entered `to` by setCurrentState()
        SetUp,  ///< made the set-up step of `to`
        Update, ///< made the update step of `to`
        Kill    ///< was killed in `to`
    };

    Kind kind;
    qint64 from; ///< the state before; equal to `to` where the state stayed
    qint64 to;
    qint64 info;
    float delay;    ///< seconds, of a Change
    double seconds; ///< since logging was switched on
};

/// Names for states; those without one appear as numbers.
using StateNames = QMap<qint64, QString>;

/// The log for people, a line for each entry, such as
///
///     0.000 change Red -> Green, info 7, delay 2.5
///     2.500 set-up Green, info 7
[[nodiscard]] DRAVELIN_EXPORT QStringList transitionLines(const QList<StateTransition> &transitions,
                                                          const StateNames &names = {});

/// The changes from state to state as a graph in Graphviz's language, each with the number of times it was made; direct
/// ones are dashed.
///
///     file.write(dravelin::transitionGraph(machine->transitions()).toUtf8());   // dot -Tsvg
[[nodiscard]] DRAVELIN_EXPORT QString transitionGraph(const QList<StateTransition> &transitions,
                                                      const StateNames &names = {});

} // namespace dravelin
