// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QDate>
#include <QtCore/QTextStream>

static QTextStream out(stdout);

//! [class]
class Shape : public dravelin::Coding
{
public:
    void encodeWithCoder(dravelin::KeyedArchiver &coder) const override
    {
        dravelin::encodeString(coder, name, "name");
        dravelin::encodeColor(coder, fill, "fill");
        coder.encodeObject(frame, "frame");
        coder.encodeObject(next.lock(), "next");
    }

    bool initWithCoder(dravelin::KeyedUnarchiver &coder) override
    {
        name = dravelin::decodeStringForKey(coder, "name");
        fill = dravelin::decodeColorForKey(coder, "fill");
        frame = coder.decodeObjectForKey<QRectF>("frame");
        next = coder.decodeObjectForKey<Shape>("next");
        return !name.isNull(); // a shape without a name is no shape
    }

    QString name;
    dravelin::Color fill = Qt::white;
    QRectF frame;
    std::weak_ptr<Shape> next;
};
//! [class]

QByteArray save()
{
    //! [save]
    dravelin::registerCodingClass<Shape>("Shape"); // once, for instance in main()

    auto box = std::make_shared<Shape>(), dot = std::make_shared<Shape>();
    box->name = "box";
    box->frame = QRectF(0, 0, 64, 48);
    dot->name = "dot";
    dot->fill = Qt::red;
    box->next = dot;
    dot->next = box;

    dravelin::KeyedArchiver archiver;
    archiver.encodeObjects(QList{box, dot}, "shapes");
    archiver.encodeDouble(1.5, "zoom");
    const QByteArray data = archiver.encodedData();
    //! [save]
    return data;
}

void load(const QByteArray &data)
{
    //! [load]
    dravelin::KeyedUnarchiver unarchiver(data);
    const auto shapes = unarchiver.decodeObjectsForKey<Shape>("shapes");
    for (const auto &shape : shapes)
        out << shape->name << ' ' << dravelin::colorToString(shape->fill) << ", then " << shape->next.lock()->name
            << '\n';
    out << "zoom " << unarchiver.decodeDoubleForKey("zoom") << '\n';
    if (!unarchiver.containsValueForKey("grid"))
        out << "no grid\n";
    //! [load]
}

void values()
{
    //! [values]
    const QVariantMap page{
        {"size", QSize(210, 297)}, {"edited", QDate(2024, 2, 29)}, {"tags", QStringList{"draft", "blue"}}};
    const QByteArray data = dravelin::KeyedArchiver::archivedDataWithRootObject(page);
    const auto copy = dravelin::KeyedUnarchiver::unarchiveObjectWithData<QVariantMap>(data);
    out << (copy == page ? "equal" : "different") << ", " << copy["tags"].typeName() << '\n';
    //! [values]
}

void damage(const QByteArray &data)
{
    //! [damage]
    QString error;
    const QVariant lost = dravelin::KeyedUnarchiver::unarchiveObjectWithData(data.chopped(40), &error);
    out << (lost.isValid() ? "read" : "not read") << (error.startsWith("not an archive: line ") ? ", and why\n" : "\n");

    QByteArray renamed = data;
    renamed.replace("<string>Shape<", "<string>Figure<");
    dravelin::KeyedUnarchiver unarchiver(renamed);
    out << unarchiver.decodeObjectsForKey<Shape>("shapes").size() << " shapes: " << unarchiver.error() << '\n';

    dravelin::registerCodingClass<Shape>("Figure"); // read under either name, written as "Shape"
    out << dravelin::KeyedUnarchiver(renamed).decodeObjectsForKey<Shape>("shapes").size() << " shapes\n";
    //! [damage]
}

int main()
{
    const QByteArray data = save();
    load(data);
    values();
    damage(data);
}
