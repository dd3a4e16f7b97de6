// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "keyboard/keyboardview.h"

#include <dravelin/platform/event.h>

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>

#include <vector>

using dravelin::Event;
using namespace Qt::StringLiterals;

namespace {

constexpr double columns = 15;
constexpr double rows = 6;

/// A key at its place; sizes are in widths of a letter's key.
struct Key
{
    QString label;
    quint32 scanCode;
    QRectF place;
    quint64 flag = 0;
};

class Layout
{
public:
    Layout()
    {
        beginRow(0);
        add(u"Esc"_s, 9, 1.5);
        for (quint32 i = 0; i < 12; ++i)
            add(u"F%1"_s.arg(i + 1), i < 10 ? 67 + i : 85 + i, 1.125);
        beginRow(1);
        addLetters(u"`"_s, 49);
        addLetters(u"1234567890-="_s, 10);
        add(u"Backspace"_s, 22, 2);
        beginRow(2);
        add(u"Tab"_s, 23, 1.5);
        addLetters(u"QWERTYUIOP[]"_s, 24);
        add(u"\\"_s, 51, 1.5);
        beginRow(3);
        add(u"Caps"_s, 66, 1.75, Event::CapsLock);
        addLetters(u"ASDFGHJKL;'"_s, 38);
        add(u"Return"_s, 36, 2.25);
        beginRow(4);
        add(u"Shift"_s, 50, 2.25, Event::Shift);
        addLetters(u"ZXCVBNM,./"_s, 52);
        add(u"Shift"_s, 62, 2.75, Event::Shift);
        addLastRow();
    }
    std::vector<Key> keys;

private:
    void addLastRow()
    {
        beginRow(5);
        add(u"Control"_s, 37, 1.5, Event::Control);
        add(u"Super"_s, 133, 1.25, Event::Command);
        add(u"Alt"_s, 64, 1.25, Event::Option);
        add(QString(), 65, 6);
        add(u"AltGr"_s, 108, 1);
        add(u"\u2190"_s, 113, 1);
        add(u"\u2191"_s, 111, 1);
        add(u"\u2193"_s, 116, 1);
        add(u"\u2192"_s, 114, 1);
    }
    void beginRow(int row)
    {
        m_x = 0;
        m_y = row;
    }
    void add(const QString &label, quint32 scanCode, double width, quint64 flag = 0)
    {
        keys.push_back({label, scanCode, QRectF(m_x, m_y, width, 1), flag});
        m_x += width;
    }
    void addLetters(const QString &letters, quint32 firstScanCode)
    {
        for (const QChar letter : letters)
            add(letter, firstScanCode++, 1);
    }

    double m_x = 0;
    double m_y = 0;
};

const std::vector<Key> &keyboard()
{
    static const Layout layout;
    return layout.keys;
}

} // namespace

KeyboardView::KeyboardView()
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Keyboard"));
}

int KeyboardView::heightForWidth(int width) const { return int(width * rows / columns); }

void KeyboardView::setModifierFlags(quint64 flags)
{
    if (flags == m_flags)
        return;
    m_flags = flags;
    update();
}

bool KeyboardView::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
        const quint32 scanCode = static_cast<QKeyEvent *>(event)->nativeScanCode();
        if (event->type() == QEvent::KeyPress)
            m_held.insert(scanCode);
        else
            m_held.remove(scanCode);
        update();
    }
    return QWidget::event(event);
}

/// Releases that go elsewhere are not seen.
void KeyboardView::focusOutEvent(QFocusEvent *event)
{
    m_held.clear();
    QWidget::focusOutEvent(event);
}

void KeyboardView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = std::min(width() / columns, height() / rows);
    for (const Key &key : keyboard()) {
        const QRectF place(key.place.topLeft() * unit, key.place.size() * unit);
        const bool isLive = (key.flag & m_flags) != 0;
        const QColor pressed = isLive ? QColor(245, 166, 35) : QColor(88, 170, 88);
        const bool isLit = isLive || m_held.contains(key.scanCode);
        painter.setPen(palette().mid().color());
        painter.setBrush(isLit ? pressed : palette().button().color());
        painter.drawRoundedRect(place.adjusted(1.5, 1.5, -1.5, -1.5), 4, 4);
        painter.setPen(isLit ? QColor(Qt::black) : palette().buttonText().color());
        painter.drawText(place, Qt::AlignCenter, key.label);
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().highlight().color(), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(QRectF(1, 1, columns * unit - 2, rows * unit - 2));
    }
}
