// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/stackview.h>

namespace dravelin {

FlippedView::FlippedView(QWidget *parent) : QWidget(parent) {}

FlippedView::FlippedView(const QRectF &frame, QWidget *parent) : QWidget(parent) { setFrame(this, frame); }

bool FlippedView::isFlipped() const { return true; }

} // namespace dravelin
