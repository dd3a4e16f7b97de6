// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/xml.h>

#include <QtCore/QHash>
#include <QtCore/QString>

#include <functional>
#include <memory>

namespace dravelin {

/// Hands the children of an element to one handler per name.
///
///     dravelin::XMLContentParser pages, book;
///     pages.addHandler("line", [&](const auto &line) { print(line->stringValue()); });
///     book.addHandler("page", [&](const auto &page) { pages.parse(page); });
///     book.parse(document->rootElement());
///
/// Handlers may do anything: change the tree, parse with the same parser, set its handlers, destroy it, throw.
class DRAVELIN_EXPORT XMLContentParser
{
public:
    using Handler = std::function<void(const std::shared_ptr<XMLNode> &node)>;

    /// A parser without handlers.
    /// \operation{init}
    XMLContentParser();
    ~XMLContentParser();
    Q_DISABLE_COPY_MOVE(XMLContentParser)

    /// Sets the handler for children of that name in place of an earlier one; an empty handler takes it away.
    /// \operation{addHandler:handler:}
    void addHandler(const QString &name, Handler handler);

    /// Calls the handlers for the direct children of an element that have one, in order. Children that a handler adds
    /// are not visited, nor are those that have left the element when it is their turn. Does nothing without an element.
    /// What a handler throws ends the walk and is passed on.
    /// \operation{parse:}
    void parse(std::shared_ptr<XMLNode> element) const;

private:
    using Handlers = QHash<QString, std::shared_ptr<const Handler>>;
    std::shared_ptr<Handlers> _handlerLookup; // shared with walks under way
};

} // namespace dravelin
