// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

static QTextStream out(stdout);

static QString title(const QVariant &track) { return track.toMap().value("title").toString(); }

//! [cell]
class TrackCell : public QWidget
{
public:
    TrackCell()
    {
        auto *layout = new QHBoxLayout(this);
        layout->addWidget(new QLabel);
    }
};
//! [cell]

//! [handler]
class Tracks : public dravelin::TableViewHandler
{
    using TableViewHandler::TableViewHandler;
    void updateTableView(QWidget *cell, qsizetype row) override
    {
        cell->findChild<QLabel *>()->setText(title(tableData()[row]));
    }
};
//! [handler]

static void print(const QVariantList &rows)
{
    QStringList titles;
    for (const QVariant &row : rows)
        titles << title(row);
    out << titles.join(", ") << '\n';
}

/// A drag as the table tells of it.
static void drag(Tracks &handler, const dravelin::IndexSet &rows, int dropRow)
{
    dravelin::TableView *table = handler.tableView();
    handler.willBeginAtPoint(table, {}, rows);
    handler.acceptDrop(table, dropRow, dravelin::DropOperation::Above);
    handler.endedAtPoint(table, {}, Qt::MoveAction);
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    auto rows = std::make_shared<QVariantList>();
    for (const char *name : {"Dawn", "Rain", "Street", "Night", "Home"})
        rows->append(QVariantMap{{"title", name}});

    //! [table]
    dravelin::TableView table;
    table.registerView<TrackCell>("track"); // or table.registerInterfaceFile("track", ":/track.ui")
    Tracks handler(&table, "track");
    handler.setSourceData(rows); // a std::shared_ptr<QVariantList>
    //! [table]
    table.resize(300, 400);
    table.show();
    out << table.viewAtColumn(0, 3)->findChild<QLabel *>()->text() << " is in row 3\n";

    //! [changes]
    rows->append(QVariantMap{{"title", "Encore"}});
    handler.dataChanged();
    //! [changes]
    print(*rows);

    drag(handler, {1, 3}, 5);
    print(*rows);

    //! [moves]
    handler.setReordersToDropRow(true);
    QObject::connect(&handler, &dravelin::TableViewHandler::rowsMoved,
                     [](const dravelin::IndexSet &, qsizetype to) { out << "moved to row " << to << ": "; });
    //! [moves]
    drag(handler, {1, 2}, 5);
    print(*rows);
    //! [button]
    dravelin::selectRow(&table, 5);
    handler.moveSelectedRowsUp(); // what Alt+Up does
    //! [button]
    print(*rows);

    QStandardItemModel library;
    auto *album = new QStandardItem("Album");
    auto *side = new QStandardItem("Side A");
    auto *track = new QStandardItem("Rain");
    library.appendRow(album);
    album->appendRow(side);
    side->appendRow(track);
    //! [outline]
    dravelin::OutlineView outline;
    outline.setModel(&library);
    dravelin::selectItem(&outline, track->index());
    out << "row " << outline.rowForItem(track->index()) << " is selected\n";
    //! [outline]
}
