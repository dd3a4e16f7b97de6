// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the encoding page does on its own: writes a large text, a program and an XML document of the system in all forms,
// has Python read them back, reads what Python writes, walks the document's tree, and sorts arrays of every type.

#include "tour.h"

#include "encoding/arraypanel.h"
#include "encoding/encodingpage.h"
#include "encoding/formspanel.h"
#include "encoding/xmlpanel.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtWidgets/QTabWidget>

using namespace Qt::StringLiterals;
using namespace dravelin;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool save(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

} // namespace

class EncodingPage::TourSteps
{
public:
    TourSteps(EncodingPage &page, Tour &tour)
        : m_page(page), m_tour(tour), m_folder(tour.folder().filePath(u"encoding"_s))
    {
        m_folder.mkpath(u"."_s);
    }

    void run()
    {
        const QString document = u"/usr/share/mime/packages/freedesktop.org.xml"_s;
        m_page.m_tabs->setCurrentIndex(0);
        encode(u"text"_s, u"/var/lib/dpkg/status"_s);
        encode(u"program"_s, QCoreApplication::applicationFilePath());
        encode(u"document"_s, document);
        m_tour.text(u"encoding-forms"_s, m_report);
        m_page.m_tabs->setCurrentIndex(1);
        walk(document);
        readBack();
        m_page.m_tabs->setCurrentIndex(2);
        sort();
    }

private:
    void encode(const QString &kind, const QString &path)
    {
        const QByteArray bytes = contentOf(path);
        m_tour.expect(!bytes.isEmpty() && save(file(kind, u"source"_s), bytes), u"read "_s + path);
        m_page.m_forms->setBytes(path.section(u'/', -1), bytes);
        m_page.m_forms->start();
        m_tour.waitFor([&] { return !m_page.m_forms->isRunning(); }, kind + u" encoded"_s);
        m_report += u"%1, %2 bytes\n"_s.arg(kind).arg(bytes.size());
        for (const FormResult &result : m_page.m_forms->results()) {
            m_tour.expect(result.isSame, u"%1 comes back from %2"_s.arg(kind, result.name));
            m_tour.expect(save(file(kind, result.fileSuffix), result.written), u"saved as "_s + result.fileSuffix);
            m_report += u"    %1 %2 bytes, written at %3, read at %4\n"_s.arg(result.name, -16)
                            .arg(result.written.size(), 10)
                            .arg(rateText(result.inputSize, result.writeSeconds),
                                 rateText(result.inputSize, result.readSeconds));
        }
        m_tour.expect(m_page.m_forms->results().size() == allForms().size(), kind + u" in all forms"_s);
        m_tour.picture(m_page.window(), u"encoding-1-"_s + kind);
    }

    void walk(const QString &path)
    {
        m_tour.expect(m_page.m_xml->show(path.section(u'/', -1), contentOf(path)), u"the document is read"_s);
        int types = 0, children = 0;
        XMLContentParser parser;
        parser.addHandler(u"mime-type"_s, [&](const auto &) { ++types; });
        parser.parse(m_page.m_xml->document()->rootElement());
        qsizetype position = 0;
        while (findXmlNode(m_page.m_xml->document()->rootElement(), position, u"mime-type"_s))
            ++children;
        m_tour.expect(types > 500 && types == children, u"%1 MIME types by handler and by search"_s.arg(types));
        m_page.m_xml->choose({20});
        m_tour.picture(m_page.window(), u"encoding-2-tree"_s);
        const QString pretty = prettyPrintXML(QString::fromUtf8(contentOf(path)));
        m_tour.expect(save(file(u"document"_s, u"pretty.xml"_s), pretty.toUtf8()), u"printed indented"_s);
    }

    void readBack()
    {
        const QString python = QStandardPaths::findExecutable(u"python3"_s);
        if (!m_tour.expect(!python.isEmpty(), u"there is Python"_s))
            return;
        QProcess process;
        process.start(python, {u"-"_s, m_folder.path()});
        process.write(contentOf(u":/encoding/readback.py"_s));
        process.closeWriteChannel();
        m_tour.expect(process.waitForFinished(60'000) && process.exitCode() == 0, u"Python reads every form"_s);
        m_tour.text(u"encoding-python"_s,
                    QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError()));
        for (const QString &kind : {u"text"_s, u"program"_s, u"document"_s})
            readFromPython(kind);
    }

    void readFromPython(const QString &kind)
    {
        const QByteArray source = contentOf(file(kind, u"source"_s));
        const QList<Form> forms = allForms();
        for (const Form &form : forms.first(4)) {
            const QByteArray written = contentOf(file(kind, u"python."_s + form.fileSuffix));
            m_tour.expect(!written.isEmpty() && form.read(written) == source,
                          u"%1 read from Python's %2"_s.arg(kind, form.name));
        }
    }

    void sort()
    {
        for (int type = 0; type < 11; ++type) {
            m_page.m_arrays->chooseType(type);
            const bool ascending = type % 2 == 0;
            m_page.m_arrays->sortSlowly(ascending);
            if (type == 10) {
                m_tour.waitFor([&] { return m_page.m_arrays->sortedCount() >= 2000; }, u"half is sorted"_s);
                m_tour.picture(m_page.window(), u"encoding-3-sorting"_s);
            }
            m_tour.waitFor([&] { return !m_page.m_arrays->isSorting(); }, m_page.m_arrays->state());
            m_tour.expect(m_page.m_arrays->isSorted(ascending), u"array type %1 is sorted"_s.arg(type));
        }
        m_tour.picture(m_page.window(), u"encoding-4-sorted"_s);
    }

    [[nodiscard]] QString file(const QString &kind, const QString &suffix) const
    {
        return m_folder.filePath(kind + u'.' + suffix);
    }

    EncodingPage &m_page;
    Tour &m_tour;
    QDir m_folder;
    QString m_report;
};

void EncodingPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
