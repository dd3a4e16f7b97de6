// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the photo page does on its own: builds a chain and renders it on the photograph, renders every filter of the
// catalogue into one contact sheet, and measures chains.

#include "tour.h"

#include "photo/looks.h"
#include "photo/photopage.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QPainter>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QSpinBox>

using namespace Qt::StringLiterals;
using namespace dravelin;

class PhotoPage::TourSteps
{
public:
    TourSteps(PhotoPage &page, Tour &tour) : m_page(page), m_tour(tour) {}

    void run()
    {
        chain();
        contactSheet();
        measure();
    }

private:
    void add(const char *name, int level, int index)
    {
        m_page.m_level->setValue(level);
        m_page.m_index->setValue(index);
        const QList<CatalogueEntry> &entries = wholeCatalogue();
        for (int i = 0; i < entries.size(); ++i) {
            if (qstrcmp(entries[i].name, name) == 0)
                m_page.add(i);
        }
    }

    void chain()
    {
        add("Vignette", 1, 0);
        add("Exposure", 0, 2);
        add("Color", 0, 1);
        m_tour.expect(m_page.m_list->item(0)->text().startsWith(u"Color "_s),
                      u"the chain is sorted by level and index"_s);
        m_tour.waitFor([this] { return !m_page.isRendering(); }, u"the chain is rendered"_s);
        m_tour.picture(m_page.window(), u"photo-1-chain"_s);
        const QByteArray text = m_page.m_chain.encodeChain();
        auto copy = FilterProcessor::decodeChain(text);
        m_tour.expect(copy && copy->applyFilters(m_page.m_photo) == m_page.m_chain.applyFilters(m_page.m_photo),
                      u"the chain comes back from its text"_s);
    }

    void contactSheet()
    {
        const QImage photo = m_page.m_photo.scaled(300, 200, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const QList<CatalogueEntry> &entries = wholeCatalogue();
        const int columns = 4, rows = int(entries.size() + columns) / columns;
        QImage sheet(columns * 310 + 10, rows * 235 + 10, QImage::Format_RGB32);
        sheet.fill(Qt::white);
        QPainter painter(&sheet);
        const auto put = [&](int cell, const QImage &image, const QString &name) {
            const QPoint place(10 + cell % columns * 310, 10 + cell / columns * 235);
            painter.drawImage(place, image);
            painter.drawText(place + QPoint(0, 218), name);
        };
        put(0, photo, u"The photograph"_s);
        int changed = 0;
        for (int i = 0; i < entries.size(); ++i) {
            FilterProcessor one(1);
            one.addFilter(entries[i].make(photo.mirrored(true, true)), 0, 0);
            const QImage result = one.applyFilters(photo);
            changed += result.size() == photo.size() && result != photo;
            put(i + 1, result, QLatin1String(entries[i].name));
        }
        painter.end();
        m_tour.expect(changed == entries.size(),
                      u"%1 filters of %2 change the photograph"_s.arg(changed).arg(entries.size()));
        m_tour.expect(sheet.save(m_tour.folder().filePath(u"photo-2-catalogue.png"_s)), u"the contact sheet"_s);
    }

    void measure()
    {
        QString report = u"%1 x %2\n"_s.arg(m_page.m_photo.width()).arg(m_page.m_photo.height());
        const auto time = [&](const QString &name, const QList<const char *> &names) {
            FilterProcessor chain(1);
            for (const CatalogueEntry &entry : wholeCatalogue()) {
                for (const char *each : names) {
                    if (qstrcmp(each, entry.name) == 0)
                        chain.addFilter(entry.make(m_page.m_second), 0, chain.filterCount());
                }
            }
            QElapsedTimer timer;
            timer.start();
            const QImage result = chain.applyFilters(m_page.m_photo);
            report += u"%1: %2 ms\n"_s.arg(name).arg(double(timer.nsecsElapsed()) / 1e6, 0, 'f', 1);
            m_tour.expect(!result.isNull(), name + u" rendered"_s);
        };
        time(u"sepia"_s, {"Sepia Tone"});
        time(u"exposure, color, hue"_s, {"Exposure", "Color", "Hue"});
        time(u"the same, vibrance, vignette, multiply, sepia"_s,
             {"Exposure", "Color", "Hue", "Vibrance", "Vignette", "Color Multiply Blend", "Sepia Tone"});
        m_tour.text(u"photo-3-timings"_s, report);
    }

    PhotoPage &m_page;
    Tour &m_tour;
};

void PhotoPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
