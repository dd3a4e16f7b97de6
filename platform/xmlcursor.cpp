// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/xmltree.h"

#include <algorithm>

namespace dravelin::detail {

namespace {

// Up to here a walk from the first child costs less than looking for the cursor.
constexpr qsizetype Near = 16;

/// The child `steps` behind a node; nothing behind the last one, `steps` is then what was left.
xmlNode *forward(xmlNode *node, qsizetype &steps)
{
    for (; node && steps > 0; --steps)
        node = XMLTree::neighbour(node, &xmlNode::next);
    return node;
}

xmlNode *backward(xmlNode *node, qsizetype steps)
{
    for (; steps > 0; --steps)
        node = XMLTree::neighbour(node, &xmlNode::prev);
    return node;
}

} // namespace

XMLTree::Cursor *XMLTree::findCursor(const xmlNode *parent)
{
    const auto known = std::ranges::find(m_cursors, parent, &Cursor::parent);
    if (known == m_cursors.end())
        return nullptr;
    std::rotate(m_cursors.begin(), known, known + 1);
    return m_cursors.data();
}

XMLTree::Cursor &XMLTree::cursor(xmlNode *parent)
{
    if (Cursor *known = findCursor(parent))
        return *known;
    std::rotate(m_cursors.begin(), m_cursors.end() - 1, m_cursors.end());
    return m_cursors.front() = {.parent = parent};
}

void XMLTree::found(xmlNode *parent, qsizetype index, xmlNode *child)
{
    if (index < Near)
        return;
    Cursor &known = cursor(parent);
    known.child = child;
    known.index = index;
}

qsizetype XMLTree::childCount(xmlNode *parent)
{
    qsizetype steps = Near;
    xmlNode *child = forward(firstChild(parent), steps);
    if (!child)
        return Near - steps;
    Cursor &known = cursor(parent);
    if (known.count < 0) {
        for (known.count = Near; child; child = neighbour(child, &xmlNode::next))
            ++known.count;
    }
    return known.count;
}

xmlNode *XMLTree::childAt(xmlNode *parent, qsizetype index)
{
    if (index < 0)
        return nullptr;
    qsizetype steps = index;
    if (index < Near)
        return forward(firstChild(parent), steps);
    const Cursor known = cursor(parent);
    xmlNode *child;
    if (!known.child || index < known.index / 2)
        child = forward(firstChild(parent), steps);
    else if (steps -= known.index; steps >= 0)
        child = forward(known.child, steps);
    else
        child = backward(known.child, -steps);
    if (child)
        found(parent, index, child);
    return child;
}

void XMLTree::forget(const xmlNode *child)
{
    Cursor *known = findCursor(child->parent);
    if (!known)
        return;
    known->count -= known->count >= 0;
    if (known->child != child) { // it is not known on which side it stood
        known->child = nullptr;
    } else if (xmlNode *next = neighbour(child, &xmlNode::next)) {
        known->child = next;
    } else {
        known->child = neighbour(child, &xmlNode::prev);
        --known->index;
    }
}

void XMLTree::forgetStrangers()
{
    for (Cursor &known : m_cursors) {
        if (known.parent && known.parent->doc != m_doc)
            known = {};
    }
}

} // namespace dravelin::detail
