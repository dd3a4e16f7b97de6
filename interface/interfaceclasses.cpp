// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/stackview.h>
#include <dravelin/platform/interfacefile.h>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

/// Qt Designer writes the whole name; short ones are for files that are written by hand.
template <class Widget>
void registerWidget(const QString &name)
{
    registerInterfaceClass<Widget>(name);
    registerInterfaceClass<Widget>(u"dravelin::"_s + name);
}

void registerWidgets()
{
    registerWidget<FlippedView>(u"FlippedView"_s);
    registerWidget<VerticalStackView>(u"VerticalStackView"_s);
}
Q_CONSTRUCTOR_FUNCTION(registerWidgets)

} // namespace

} // namespace dravelin
