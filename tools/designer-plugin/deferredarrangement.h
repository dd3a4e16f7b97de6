// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/interface/stackview.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include <vector>

/// Arranges new stack views once, on the next pass of the event loop: a plain QUiLoader tells nobody when it is done, and
/// until then it does not leave the call. Views in a form that is edited in Qt Designer stay as they are; those in its
/// previews are arranged.
class DeferredArrangement : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void add(dravelin::VerticalStackView *view);

private:
    void arrange();

    std::vector<QPointer<dravelin::VerticalStackView>> m_views; ///< parents before their children
};
