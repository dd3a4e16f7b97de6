// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"

class ArrayPanel;
class FormsPanel;
class QTabWidget;
class XmlPanel;

/// Bytes in all the forms that the library knows, XML as a tree, and typed arrays.
class EncodingPage : public Page
{
    Q_OBJECT

public:
    EncodingPage();

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    class TourSteps;

    QTabWidget *m_tabs;
    FormsPanel *m_forms;
    XmlPanel *m_xml;
    ArrayPanel *m_arrays;
};
