// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/transitions.h>

#include <tuple>
#include <utility>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

QString name(qint64 state, const StateNames &names) { return names.value(state, QString::number(state)); }

QString line(const StateTransition &entry, const StateNames &names)
{
    const QString to = name(entry.to, names);
    const QString info = u", info %1"_s.arg(entry.info);
    switch (entry.kind) {
    case StateTransition::Change:
        return u"change "_s + name(entry.from, names) + u" -> "_s + to + info + u", delay "_s
               + QString::number(double(entry.delay));
    case StateTransition::Direct:
        return u"direct "_s + name(entry.from, names) + u" -> "_s + to;
    case StateTransition::SetUp:
        return u"set-up "_s + to + info;
    case StateTransition::Update:
        return u"update "_s + to + info;
    case StateTransition::Kill:
        return u"kill in "_s + to;
    }
    return {};
}

bool changesState(const StateTransition &entry)
{
    return entry.kind == StateTransition::Change || entry.kind == StateTransition::Direct;
}

QString quoted(QString text)
{
    return u'"' + text.replace(u'\\', "\\\\"_L1).replace(u'"', "\\\""_L1).replace(u'\n', "\\n"_L1) + u'"';
}

struct Edge
{
    StateTransition::Kind kind;
    qint64 from;
    qint64 to;

    friend bool operator<(const Edge &a, const Edge &b)
    {
        return std::tie(a.kind, a.from, a.to) < std::tie(b.kind, b.from, b.to);
    }
};

} // namespace

QStringList transitionLines(const QList<StateTransition> &transitions, const StateNames &names)
{
    QStringList lines;
    for (const StateTransition &entry : transitions)
        lines << QString::number(entry.seconds, 'f', 3) + u' ' + line(entry, names);
    return lines;
}

QString transitionGraph(const QList<StateTransition> &transitions, const StateNames &names)
{
    QMap<Edge, int> counts;
    for (const StateTransition &entry : transitions) {
        if (changesState(entry))
            ++counts[{entry.kind, entry.from, entry.to}];
    }
    QString graph = u"digraph {\n"_s;
    for (const auto &[edge, count] : std::as_const(counts).asKeyValueRange()) {
        graph += u"    "_s + quoted(name(edge.from, names)) + u" -> "_s + quoted(name(edge.to, names)) + u" [label="_s
                 + QString::number(count)
                 + (edge.kind == StateTransition::Direct ? u", style=dashed];\n"_s : u"];\n"_s);
    }
    return graph + u"}\n"_s;
}

} // namespace dravelin
