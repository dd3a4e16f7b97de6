// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "filterlist.h"
#include "filtertext.h"
#include "imagefiles.h"
#include "options.h"
#include "progressbar.h"

#include <dravelin/version.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QSaveFile>
#include <QtGui/QImageReader>

#include <cstdio>

using namespace Qt::StringLiterals;
using dravelin::FilterProcessor;

namespace {

enum ExitCode { Done = 0, SomeFailed = 1, Misused = 2 };

void apply(FilterProcessor &chain, const Job &job, int quality, const std::function<void(double)> &progress)
{
    const dravelin::FilterImage output = chain.applyFilters(dravelin::FilterImage(readImage(job.input)));
    const auto report = [&](double done) {
        progress(done);
        return true;
    };
    const QImage result = output.toImage({.progress = report});
    if (result.isNull())
        throw Failure(u"%1 is too large for the memory"_s.arg(job.input));
    writeImage(result, job.output, quality);
}

void complain(const std::exception &failure) { std::fprintf(stderr, "dravelin-filter: %s\n", failure.what()); }

/// One after the other; what fails does not keep the others from being done.
ExitCode applyAll(FilterProcessor &chain, const QList<Job> &jobs, int quality)
{
    ProgressBar bar(jobs.size());
    ExitCode code = Done;
    for (qsizetype i = 0; i < jobs.size(); ++i) {
        try {
            bar.show(i, 0, jobs[i].input);
            apply(chain, jobs[i], quality, [&](double done) { bar.show(i, done, jobs[i].input); });
        } catch (const Failure &failure) {
            bar.clear();
            complain(failure);
            code = SomeFailed;
        }
    }
    return code;
}

void saveChain(const FilterProcessor &chain, const QString &path)
{
    QSaveFile file(path);
    const QByteArray text = chain.encodeChain() + '\n';
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush() || !file.commit())
        throw Failure(u"%1 cannot be written: %2"_s.arg(path, file.errorString()));
}

ExitCode run(const QCommandLineParser &parser)
{
    if (parser.isSet(u"list"_s)) {
        std::fputs(filterList().toUtf8().constData(), stdout);
        return Done;
    }
    FilterProcessor chain = chainFrom(parser);
    const bool saves = parser.isSet(u"save-chain"_s), onlySaves = saves && parser.positionalArguments().isEmpty();
    const QList<Job> jobs = onlySaves ? QList<Job>() : jobsFrom(parser);
    const int quality = qualityFrom(parser);
    if (saves)
        saveChain(chain, parser.value(u"save-chain"_s));
    return applyAll(chain, jobs, quality);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QLatin1String(DRAVELIN_VERSION));
    QImageReader::setAllocationLimit(0); // the user's own files may be as large as the memory
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(QCoreApplication::arguments())) {
        complain(Failure(parser.errorText()));
        return Misused;
    }
    parser.process(application); // --help and --version end here
    try {
        return run(parser);
    } catch (const Failure &failure) {
        complain(failure);
        return Misused;
    }
}
