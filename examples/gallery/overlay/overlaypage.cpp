// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "overlay/overlaypage.h"

#include "overlay/icons.h"

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace dravelin;

namespace {

constexpr QSizeF smallSize(40, 40);

QLabel *heading(const QString &text)
{
    auto *label = new QLabel(text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

float fraction(const QSlider *slider) { return float(slider->value()) / float(slider->maximum()); }

} // namespace

OverlayPage::OverlayPage() : m_originals(new IconView), m_results(new IconView), m_small(new IconView)
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(heading(tr("Icons")));
    layout->addWidget(m_originals, 3);
    layout->addWidget(heading(tr("Overlays")));
    layout->addWidget(m_results, 3);
    layout->addWidget(heading(tr("In %1 points").arg(smallSize.width())));
    layout->addWidget(m_small, 1);
    layout->addWidget(makeControls());
    m_state = new QLabel;
    layout->addWidget(m_state);
    m_icons = drawIcons();
    makeOverlays();
}

QString OverlayPage::title() const { return tr("Overlays"); }

QWidget *OverlayPage::makeControls()
{
    auto *controls = new QWidget;
    auto *form = new QFormLayout(controls);
    m_hue = makeSlider(tr("&Hue"), 600);
    m_saturation = makeSlider(tr("&Saturation"), 800);
    m_level = makeSlider(tr("Grey &level"), 500);
    m_grey = new QCheckBox(tr("&Darken instead of colouring"));
    m_background = new QCheckBox(tr("On a &background"));
    auto *open = new QPushButton(tr("&Add an Icon…"));
    form->addRow(tr("&Hue"), m_hue);
    form->addRow(tr("&Saturation"), m_saturation);
    form->addRow(m_grey);
    form->addRow(tr("Grey &level"), m_level);
    form->addRow(m_background);
    form->addRow(open);
    connect(m_grey, &QCheckBox::toggled, this, &OverlayPage::tint);
    connect(m_background, &QCheckBox::toggled, this, &OverlayPage::makeOverlays);
    connect(open, &QPushButton::clicked, this, &OverlayPage::openFile);
    return controls;
}

QSlider *OverlayPage::makeSlider(const QString &name, int value)
{
    auto *slider = new QSlider(Qt::Horizontal);
    slider->setRange(0, 1000);
    slider->setValue(value);
    slider->setAccessibleName(QString(name).remove(u'&'));
    connect(slider, &QSlider::valueChanged, this, &OverlayPage::tint);
    return slider;
}

void OverlayPage::openFile()
{
    const QString path =
        QFileDialog::getOpenFileName(this, tr("Add an Icon"), u"/usr/share/icons"_s, tr("Images (*.png *.svg *.jpg)"));
    if (const QImage image(path); !image.isNull()) {
        m_icons << Image(image.scaled(256, 256, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        makeOverlays();
    }
}

void OverlayPage::makeOverlays()
{
    const Image background = m_background->isChecked() ? drawPlate() : Image();
    QList<QImage> originals;
    m_overlays.clear();
    for (const Image &icon : m_icons) {
        m_overlays.emplace_back(icon, background);
        originals << icon.toImage();
    }
    m_originals->setImages(originals);
    tint();
}

void OverlayPage::tint()
{
    m_hue->setDisabled(m_grey->isChecked());
    m_saturation->setDisabled(m_grey->isChecked());
    m_level->setEnabled(m_grey->isChecked());
    for (ImageOverlay &overlay : m_overlays) {
        if (m_grey->isChecked())
            overlay.colorImageWithGrayscale(fraction(m_level));
        else
            overlay.colorImageWithHue(fraction(m_hue), fraction(m_saturation));
    }
    showResults();
}

void OverlayPage::showResults()
{
    QList<QImage> results, small;
    qint64 entries = 0;
    QElapsedTimer timer;
    timer.start();
    for (ImageOverlay &overlay : m_overlays)
        results << overlay.getOverlayImage().toImage();
    const qint64 nanoseconds = timer.nsecsElapsed();
    for (ImageOverlay &overlay : m_overlays) {
        small << overlay.getOverlayImageWithSize(smallSize).toImage();
        entries += overlay.pixelEntryCount();
    }
    m_results->setImages(results);
    m_small->setImages(small);
    m_state->setText(tr("%1 icons tinted in %2 ms, %3 listed pixels")
                         .arg(results.size())
                         .arg(double(nanoseconds) / 1e6, 0, 'f', 2)
                         .arg(entries));
}
