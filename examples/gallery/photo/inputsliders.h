// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/imaging.h>

#include <QtWidgets/QWidget>

class QFormLayout;

/// A slider for every number of a filter.
class InputSliders : public QWidget
{
    Q_OBJECT

public:
    explicit InputSliders(QWidget *parent = nullptr);

    void setFilter(const std::shared_ptr<dravelin::ImageFilter> &filter);

Q_SIGNALS:
    void changed();

private:
    void addSlider(const dravelin::FilterInput &input);

    std::shared_ptr<dravelin::ImageFilter> m_filter;
    QFormLayout *m_form;
};
