// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "stack/stackpage.h"

#include "stack/block.h"

#include <dravelin/platform.h>

#include <QtCore/QSignalBlocker>
#include <QtGui/QFontDatabase>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QSlider>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace dravelin;

namespace {

constexpr int margin = 24; // between the column and the ground's edge

/// Nothing that is in it makes the window larger.
QScrollArea *makeScrollArea()
{
    auto *scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    return scroll;
}

} // namespace

StackPage::StackPage() : m_scroll(makeScrollArea())
{
    registerInterfaceClass<Block>(u"Block"_s);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(makeControls());
    layout->addWidget(m_scroll, 1);
    m_frames = new QLabel;
    m_frames->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_frames->setAlignment(Qt::AlignTop);
    m_frames->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_frames->setAccessibleName(tr("Frames"));
    m_frames->setMargin(6);
    QScrollArea *frames = makeScrollArea();
    frames->setWidget(m_frames);
    frames->setMinimumWidth(240);
    layout->addWidget(frames);
    load();
}

QString StackPage::title() const { return tr("Stack view"); }

QWidget *StackPage::makeControls()
{
    auto *panel = new QWidget;
    panel->setFixedWidth(230);
    auto *layout = new QVBoxLayout(panel);
    makePropertyControls(layout);
    makeChildControls(layout);
    layout->addStretch();
    return panel;
}

void StackPage::makePropertyControls(QBoxLayout *layout)
{
    m_alignment = new QComboBox;
    m_alignment->addItems({tr("0, left"), tr("1, centred"), tr("2, right"), tr("3, acts as 0")});
    m_spacing = new QDoubleSpinBox;
    m_spacing->setRange(-50, 50);
    m_spacing->setSingleStep(0.5);
    m_sizeToFit = new QCheckBox(tr("Size to &fit"));
    m_height = new QSlider(Qt::Horizontal);
    m_height->setRange(0, 400);
    auto *form = new QFormLayout;
    form->addRow(tr("&Alignment:"), m_alignment);
    form->addRow(tr("&Spacing:"), m_spacing);
    form->addRow(m_sizeToFit);
    form->addRow(tr("&Height:"), m_height);
    layout->addLayout(form);
    connect(m_alignment, &QComboBox::currentIndexChanged, this, &StackPage::arrange);
    connect(m_spacing, &QDoubleSpinBox::valueChanged, this, &StackPage::arrange);
    connect(m_sizeToFit, &QCheckBox::toggled, this, &StackPage::arrange);
    connect(m_height, &QSlider::valueChanged, this, &StackPage::arrange);
}

void StackPage::makeChildControls(QBoxLayout *layout)
{
    auto *form = new QFormLayout;
    m_childWidth = makeSizeField();
    m_childHeight = makeSizeField();
    form->addRow(tr("Child's &width:"), m_childWidth);
    form->addRow(tr("Child's h&eight:"), m_childHeight);
    layout->addLayout(form);
    const auto button = [&](const QString &text, auto operation) {
        auto *push = new QPushButton(text);
        connect(push, &QPushButton::clicked, this, operation);
        layout->addWidget(push);
    };
    button(tr("A&dd a Child"), &StackPage::addBlock);
    button(tr("&Remove the Child"), &StackPage::removeBlock);
    button(tr("&Load the File Again"), &StackPage::load);
}

QDoubleSpinBox *StackPage::makeSizeField()
{
    auto *field = new QDoubleSpinBox;
    field->setRange(8, 350);
    field->setSingleStep(0.25);
    connect(field, &QDoubleSpinBox::valueChanged, this, &StackPage::resizeSelected);
    return field;
}

void StackPage::load()
{
    std::unique_ptr<QWidget> ground = loadInterfaceFile(u":/stack/column.ui"_s);
    m_ground = ground.release();
    m_scroll->setWidget(m_ground); // instead of the last one, which is deleted
    m_column = m_ground->findChild<VerticalStackView *>(u"column"_s);
    m_column->setBackgroundRole(QPalette::Dark);
    const QList<Block *> blocks = m_column->findChildren<Block *>();
    for (Block *block : blocks)
        follow(block);
    select(blocks.constFirst());
    showProperties();
    showFrames();
}

void StackPage::showProperties()
{
    const QSignalBlocker blockers[] = {QSignalBlocker(m_alignment), QSignalBlocker(m_spacing),
                                       QSignalBlocker(m_sizeToFit), QSignalBlocker(m_height)};
    m_alignment->setCurrentIndex(m_column->alignment());
    m_spacing->setValue(double(m_column->itemSpacing()));
    m_sizeToFit->setChecked(m_column->sizeToFit());
    m_height->setValue(int(frame(m_column).height()));
    m_spacing->setEnabled(m_column->sizeToFit());
    m_height->setDisabled(m_column->sizeToFit());
}

void StackPage::addBlock()
{
    auto *block = new Block(m_column);
    block->resize(120, 24);
    block->show();
    follow(block);
    arrange();
    block->setFocus();
    m_scroll->widget()->resize(m_ground->minimumSize().expandedTo(m_ground->size()));
    m_scroll->ensureWidgetVisible(block);
}

void StackPage::follow(Block *block)
{
    connect(block, &Block::selected, this, [this, block] { select(block); });
    connect(block, &Block::resizedByUser, this, &StackPage::arrange);
    connect(block, &Block::removedByUser, this, &StackPage::removeBlock, Qt::QueuedConnection);
}

void StackPage::removeBlock()
{
    delete m_selected;
    select(m_column->findChild<Block *>());
    arrange();
}

void StackPage::select(Block *block)
{
    if (m_selected)
        m_selected->setSelected(false);
    m_selected = block;
    if (block)
        block->setSelected(true);
    const QSizeF size = frame(block).size();
    const QSignalBlocker blockers[] = {QSignalBlocker(m_childWidth), QSignalBlocker(m_childHeight)};
    m_childWidth->setValue(size.width());
    m_childHeight->setValue(size.height());
    m_childWidth->setEnabled(block);
    m_childHeight->setEnabled(block);
}

void StackPage::resizeSelected()
{
    if (!m_selected)
        return;
    setFrame(m_selected, {frame(m_selected).topLeft(), QSizeF(m_childWidth->value(), m_childHeight->value())});
    arrange();
}

void StackPage::arrange()
{
    m_column->setAlignment(m_alignment->currentIndex());
    m_column->setItemSpacing(float(m_spacing->value()));
    m_column->setSizeToFit(m_sizeToFit->isChecked());
    if (!m_column->sizeToFit())
        setFrame(m_column, {frame(m_column).topLeft(), QSizeF(frame(m_column).width(), m_height->value())});
    m_column->arrangeViews();
    m_ground->setMinimumSize(m_column->geometry().right() + margin, m_column->geometry().bottom() + margin);
    if (m_selected)
        select(m_selected);
    showProperties();
    showFrames();
}

void StackPage::showFrames() { m_frames->setText(framesText()); }

QString StackPage::framesText() const
{
    const float gap = m_column->sizeToFit() ? m_column->itemSpacing() : m_column->calculateItemSpacing();
    QString text = tr("gap %1\n\nview\n  %2\n\nchildren\n").arg(double(gap)).arg(NSStringFromRect(frame(m_column)));
    for (const Block *block : m_column->findChildren<Block *>())
        text += u"  %1\n"_s.arg(NSStringFromRect(frame(block)));
    return text;
}
