// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>

static QTextStream out(stdout);

static void print(const QString &what, const QWidget *view)
{
    out << what << ' ' << dravelin::NSStringFromRect(dravelin::frame(view)) << '\n';
    for (const auto *child : view->findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        out << "    " << child->objectName() << ' ' << dravelin::NSStringFromRect(dravelin::frame(child)) << '\n';
}

static QString writePanel(const QTemporaryDir &folder)
{
    QFile file(folder.filePath("panel.ui"));
    if (file.open(QIODevice::WriteOnly))
        file.write(R"(<ui version="4.0"><widget class="QWidget" name="Panel">
 <widget class="dravelin::VerticalStackView" name="column">
  <property name="geometry"><rect><x>8</x><y>8</y><width>0</width><height>0</height></rect></property>
  <property name="alignment"><number>1</number></property>
  <widget class="QLabel" name="title">
   <property name="geometry"><rect><x>0</x><y>0</y><width>100</width><height>20</height></rect></property></widget>
  <widget class="Gauge" name="gauge">
   <property name="geometry"><rect><x>0</x><y>0</y><width>50</width><height>30</height></rect></property></widget>
  <widget class="QWidget" name="rule">
   <property name="geometry"><rect><x>0</x><y>0</y><width>80</width><height>10</height></rect></property></widget>
 </widget></widget></ui>)");
    return file.fileName();
}

//! [class]
class Gauge : public QProgressBar
{
    Q_OBJECT

public:
    using QProgressBar::QProgressBar;

    void interfaceFileLoaded() { setFormat("%v of %m"); } // optional
};
//! [class]

static std::unique_ptr<QWidget> loadPanel(const QString &path)
{
    //! [load]
    dravelin::registerInterfaceClass<Gauge>("Gauge");
    std::unique_ptr<QWidget> panel = dravelin::loadInterfaceFile(path);
    auto *column = panel->findChild<dravelin::VerticalStackView *>("column");
    //! [load]
    print("loaded", column);
    return panel;
}

static void changeColumn(dravelin::VerticalStackView *column)
{
    //! [spread]
    column->setSizeToFit(false); // keep the size and spread the children over it
    column->resize(120, 100);
    column->arrangeViews();
    //! [spread]
    print("spread", column);
}

static void makeColumn(QWidget *parent)
{
    //! [code]
    auto *column = new dravelin::VerticalStackView(parent);
    column->setItemSpacing(4.5f);
    for (const char *text : {"one", "two"}) {
        auto *label = new QLabel(text, column);
        label->setObjectName(text);
        label->resize(80, 20);
    }
    column->arrangeViews();
    //! [code]
    print("made in code", column);
}

static void placeExactly(QWidget *label)
{
    //! [frame]
    dravelin::setFrame(label, {0, 33.25, 120, 20});
    const QRect pixels = label->geometry();      // 0, 33, 120, 20
    const QRectF exact = dravelin::frame(label); // 0, 33.25, 120, 20
    label->move(4, 40);                          // whoever moves it in pixels is right
    const QPointF moved = dravelin::frame(label).topLeft();
    //! [frame]
    out << dravelin::NSStringFromRect(pixels) << ' ' << dravelin::NSStringFromRect(exact) << ' '
        << dravelin::NSStringFromPoint(moved) << '\n';
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    const auto panel = loadPanel(writePanel(folder));
    changeColumn(panel->findChild<dravelin::VerticalStackView *>("column"));
    makeColumn(panel.get());
    QLabel label(panel.get());
    placeExactly(&label);
}

#include "stackview.moc"
