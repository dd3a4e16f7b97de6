// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "options.h"

#include "filtertext.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>
#include <QtGui/QImageWriter>

using namespace Qt::StringLiterals;
using dravelin::FilterProcessor;

namespace {

FilterProcessor savedChain(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(u"%1 cannot be read: %2"_s.arg(path, file.errorString()));
    auto chain = FilterProcessor::decodeChain(file.readAll());
    return chain ? std::move(*chain) : throw Failure(u"%1 holds no chain of filters"_s.arg(path));
}

/// All filters in one level, in order.
void append(FilterProcessor &chain, const std::shared_ptr<dravelin::ImageFilter> &filter, qint64 index)
{
    // One kind may be there several times.
    filter->setName(u"%1 %2"_s.arg(filter->filterName()).arg(index));
    chain.addFilter(filter, 0, index);
}

void checkFormat(const QString &path)
{
    if (!QImageWriter::supportedImageFormats().contains(QFileInfo(path).suffix().toLower().toLatin1()))
        throw Failure(u"%1: pictures of this format cannot be written"_s.arg(path));
}

/// Each file once, and none of those that are read.
void check(const QList<Job> &jobs)
{
    QSet<QString> inputs, outputs;
    for (const Job &job : jobs)
        inputs.insert(QFileInfo(job.input).canonicalFilePath());
    for (const Job &job : jobs) {
        checkFormat(job.output);
        const QString path = QFileInfo(job.output).absoluteFilePath();
        if (outputs.contains(path))
            throw Failure(u"%1 would be written twice"_s.arg(job.output));
        if (QFileInfo::exists(path) && inputs.contains(QFileInfo(path).canonicalFilePath()))
            throw Failure(u"%1 would be overwritten, but is to be read"_s.arg(job.output));
        outputs.insert(path);
    }
}

} // namespace

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(u"Applies a chain of filters to image files."_s);
    parser.addOptions({
        {{u"f"_s, u"filter"_s},
         u"Adds a filter to the chain, such as CISepiaTone:inputIntensity=0.8; further inputs follow after commas. "
         "Values are numbers, colours or files with pictures."_s,
         u"NAME[:INPUT=VALUE...]"_s},
        {{u"c"_s, u"chain"_s}, u"Begins with a chain that was saved as text."_s, u"FILE"_s},
        {u"save-chain"_s, u"Saves the chain as text; pictures are not in it."_s, u"FILE"_s},
        {{u"o"_s, u"output"_s}, u"Where to write: a file, or a folder that is there."_s, u"FILE|DIR"_s},
        {{u"q"_s, u"quality"_s}, u"Quality of the files written, from 0 to 100."_s, u"NUMBER"_s},
        {{u"l"_s, u"list"_s}, u"Lists the filters and their inputs."_s},
    });
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(u"IMAGE"_s, u"The files to read."_s, u"IMAGE..."_s);
}

FilterProcessor chainFrom(const QCommandLineParser &parser)
{
    FilterProcessor chain(1);
    qint64 index = 0;
    if (parser.isSet(u"chain"_s)) {
        const FilterProcessor saved = savedChain(parser.value(u"chain"_s));
        for (const auto &filter : saved.getAllFilters())
            append(chain, filter, index++);
    }
    for (const QString &text : parser.values(u"filter"_s))
        append(chain, filterFromText(text), index++);
    return chain.filterCount() > 0 ? std::move(chain) : throw Failure(u"there is no --filter and no --chain"_s);
}

QList<Job> jobsFrom(const QCommandLineParser &parser)
{
    const QStringList inputs = parser.positionalArguments();
    const QString output = parser.value(u"output"_s);
    const bool toFolder = QFileInfo(output).isDir();
    if (inputs.isEmpty() || output.isEmpty())
        throw Failure(inputs.isEmpty() ? u"there is no image to read"_s : u"there is no --output"_s);
    if (!toFolder && (inputs.size() > 1 || output.endsWith(u'/')))
        throw Failure(u"%1 is no folder"_s.arg(output));
    QList<Job> jobs;
    for (const QString &input : inputs)
        jobs.append({input, toFolder ? QDir(output).filePath(QFileInfo(input).fileName()) : output});
    check(jobs);
    return jobs;
}

int qualityFrom(const QCommandLineParser &parser)
{
    if (!parser.isSet(u"quality"_s))
        return -1;
    bool ok = false;
    const int quality = parser.value(u"quality"_s).toInt(&ok);
    return ok && quality >= 0 && quality <= 100 ? quality : throw Failure(u"--quality is from 0 to 100"_s);
}
