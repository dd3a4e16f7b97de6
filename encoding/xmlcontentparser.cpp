// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/xmlcontentparser.h>

#include <utility>

namespace dravelin {

XMLContentParser::XMLContentParser() : _handlerLookup(std::make_shared<Handlers>()) {}
XMLContentParser::~XMLContentParser() = default;

void XMLContentParser::addHandler(const QString &name, Handler handler)
{
    if (handler)
        _handlerLookup->insert(name, std::make_shared<const Handler>(std::move(handler)));
    else
        _handlerLookup->remove(name);
}

// By value, as a handler may let go of the caller's element.
void XMLContentParser::parse(std::shared_ptr<XMLNode> element) const
{
    if (!element)
        return;
    const auto handlers = _handlerLookup; // a handler may destroy the parser
    for (const auto &child : element->children()) {
        const QString name = child->parent() == element ? child->name() : QString();
        // A copy, as the handler may replace itself.
        if (const auto handler = name.isNull() ? nullptr : handlers->value(name))
            (*handler)(child);
    }
}

} // namespace dravelin
