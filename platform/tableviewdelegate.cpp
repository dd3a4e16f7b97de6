// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/tableviewdelegate.h>

namespace dravelin {

TableViewDelegate::TableViewDelegate() : m_self(this, [](TableViewDelegate *) {}) {}

TableViewDelegate::~TableViewDelegate() = default;

qsizetype TableViewDelegate::numberOfRowsInTableView(TableView *) { return 0; }

std::optional<PasteboardItem> TableViewDelegate::pasteboardWriterForRow(TableView *, qsizetype) { return {}; }

int TableViewDelegate::validateDrop(TableView *, qsizetype, DropOperation) { return 0; }

bool TableViewDelegate::acceptDrop(TableView *, qsizetype, DropOperation) { return false; }

void TableViewDelegate::willBeginAtPoint(TableView *, QPointF, const IndexSet &) {}

void TableViewDelegate::endedAtPoint(TableView *, QPointF, int) {}

QWidget *TableViewDelegate::viewForTableColumn(TableView *, int, qsizetype) { return nullptr; }

QWidget *TableViewDelegate::rowViewForRow(TableView *, qsizetype) { return nullptr; }

void TableViewDelegate::tableViewSelectionDidChange(TableView *) {}

} // namespace dravelin
