// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "keyboard/keyboardpage.h"

#include "keyboard/keyboardview.h"
#include "keyboard/mouseview.h"

#include <dravelin/interface.h>
#include <dravelin/platform/inputstate.h>

#include <QtCore/QThread>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

using dravelin::Event;
using dravelin::InputState;
using namespace Qt::StringLiterals;

namespace {

QString hex(quint64 number) { return u"0x%1"_s.arg(number, 6, 16, QLatin1Char('0')); }
QString place(QPointF point) { return u"%1, %2"_s.arg(point.x()).arg(point.y()); }

QString codes(const QString &characters)
{
    QStringList codes;
    for (const QChar unit : characters)
        codes << u"U+%1"_s.arg(unit.unicode(), 4, 16, QLatin1Char('0')).toUpper();
    return codes.isEmpty() ? u"none"_s : codes.join(u' ');
}

QLabel *makeText()
{
    auto *label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignTop);
    return label;
}

} // namespace

KeyboardPage::KeyboardPage()
    : m_keyboard(new KeyboardView), m_mouse(new MouseView), m_now(makeText()), m_last(makeText()), m_counts(new QLabel)
{
    auto *layout = new QVBoxLayout(this);
    auto *hint =
        new QLabel(tr("Click the keyboard and type, or hold keys and buttons anywhere. Green keys were reported by "
                      "events; orange ones are held right now."));
    hint->setWordWrap(true);
    layout->addWidget(hint);
    auto *devices = new QHBoxLayout;
    devices->addWidget(m_keyboard, 1);
    devices->addWidget(m_mouse);
    layout->addLayout(devices);
    auto *texts = new QHBoxLayout;
    texts->addWidget(m_now, 1);
    texts->addWidget(m_last, 1);
    layout->addLayout(texts);
    layout->addWidget(makeButtons());
    layout->addStretch(1);
    m_keyboard->installEventFilter(this);
    m_mouse->installEventFilter(this);
    decode(Event());
    showCounts();
}

QString KeyboardPage::title() const { return tr("Keyboard and mouse"); }

QWidget *KeyboardPage::makeButtons()
{
    auto *buttons = new QWidget;
    auto *layout = new QHBoxLayout(buttons);
    layout->setContentsMargins({});
    layout->addWidget(makeBlockButton(tr("Block, then discard the &mouse"), dravelin::discardAllMouseEvents));
    layout->addWidget(makeBlockButton(tr("Block, then discard &all"), dravelin::discardAllEvents));
    layout->addWidget(makeBlockButton(tr("Block, discard &nothing"), nullptr));
    layout->addWidget(m_counts, 1);
    return buttons;
}

QPushButton *KeyboardPage::makeBlockButton(const QString &text, void (*discard)())
{
    auto *button = new QPushButton(text);
    button->setToolTip(tr("Holds the program up for 2 seconds: type and click meanwhile."));
    connect(button, &QPushButton::clicked, this, [this, discard] { block(discard); });
    return button;
}

void KeyboardPage::block(void (*discard)())
{
    m_keyboard->setFocus();
    m_keys = m_presses = 0;
    m_counts->setText(tr("Blocked for %1 seconds: type and click").arg(m_blockSeconds));
    m_counts->repaint();
    QThread::sleep(static_cast<unsigned long>(m_blockSeconds));
    if (discard)
        discard();
    showCounts();
}

bool KeyboardPage::eventFilter(QObject *watched, QEvent *event)
{
    const Event input(event);
    if (input.type() != Event::NoType && event->type() != QEvent::ShortcutOverride) {
        m_keys += input.type() == Event::KeyDown;
        m_presses += input.type() == Event::LeftMouseDown || input.type() == Event::RightMouseDown;
        decode(input);
        showCounts();
    }
    return Page::eventFilter(watched, event);
}

void KeyboardPage::showEvent(QShowEvent *event)
{
    showNow();
    m_poll.start(50, this);
    Page::showEvent(event);
}

void KeyboardPage::hideEvent(QHideEvent *event)
{
    m_poll.stop();
    Page::hideEvent(event);
}

void KeyboardPage::timerEvent(QTimerEvent *) { showNow(); }

void KeyboardPage::showNow()
{
    const auto state = InputState::current();
    const quint64 flags = state->modifierFlags(), buttons = state->pressedMouseButtons();
    m_keyboard->setModifierFlags(flags);
    m_mouse->setButtons(buttons);
    const dravelin::ModifierKeyFlags held;
    m_now->setText(tr("Now\nmodifiers %1, %2 of the main four\nbuttons %3\nmouse at %4")
                       .arg(hex(flags))
                       .arg(held.pressedCount())
                       .arg(buttons, 3, 2, QLatin1Char('0'))
                       .arg(place(state->mouseLocation())));
}

void KeyboardPage::decode(const Event &event)
{
    m_last->setText(tr("Last event\ntype %1 at %2 s\nflags %3, %4 of the eight\ncharacters %5\nat %6")
                        .arg(event.type())
                        .arg(event.timestamp(), 0, 'f', 3)
                        .arg(hex(event.modifierFlags()))
                        .arg(dravelin::modifierPressedCount(event))
                        .arg(codes(event.characters()), place(event.location())));
}

void KeyboardPage::showCounts() { m_counts->setText(tr("%1 keys and %2 clicks came").arg(m_keys).arg(m_presses)); }
