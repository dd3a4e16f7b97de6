// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/soundpage.h"

#include "sound/categories.h"
#include "sound/soundboard.h"
#include "sound/soundpad.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QSlider>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

SoundPage::SoundPage() : m_depot(std::make_unique<dravelin::SoundDepot>())
{
    m_clock.start();
    auto *layout = new QHBoxLayout(this);
    auto *left = new QVBoxLayout;
    left->addWidget(makeFolder());
    m_board = new SoundBoard(m_cancel);
    connect(m_board, &SoundBoard::fellSilent, this, &SoundPage::showDevice);
    auto *scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(m_board);
    connect(m_board, &SoundBoard::walkedTo, scroll, [scroll](QWidget *pad) { scroll->ensureWidgetVisible(pad); });
    left->addWidget(scroll, 1);
    m_device =
        new QLabel(tr("A click plays a sound or stops it, a click with Shift plays it once more at the same time."));
    m_device->setWordWrap(true);
    m_device->setContentsMargins(3, 0, 3, 0);
    left->addWidget(m_device);
    layout->addLayout(left, 1);
    layout->addWidget(makeControls());
    connect(&m_watcher, &QFutureWatcherBase::progressRangeChanged, m_progress, &QProgressBar::setRange);
    connect(&m_watcher, &QFutureWatcherBase::progressValueChanged, m_progress, &QProgressBar::setValue);
    connect(&m_watcher, &QFutureWatcherBase::resultReadyAt, this,
            [this](int index) { takeSound(m_watcher.resultAt(index)); });
    connect(&m_watcher, &QFutureWatcherBase::finished, this, &SoundPage::showLoaded);
    m_volume->setValue(qRound(m_depot->volume() * 100));
    setCategories();
}

SoundPage::~SoundPage()
{
    m_watcher.disconnect(this);
    m_watcher.cancel();
    m_watcher.waitForFinished();
}

QString SoundPage::title() const { return tr("Sounds"); }

QWidget *SoundPage::makeFolder()
{
    auto *panel = new QWidget;
    auto *layout = new QHBoxLayout(panel);
    layout->setContentsMargins(3, 0, 3, 0);
    auto *open = new QPushButton(tr("&Open Folder…"));
    connect(open, &QPushButton::clicked, this, &SoundPage::chooseFolder);
    layout->addWidget(open);
    m_state = new QLabel;
    layout->addWidget(m_state, 1);
    m_progress = new QProgressBar;
    m_progress->setFixedWidth(120);
    m_progress->setAccessibleName(tr("Loading"));
    m_progress->hide();
    layout->addWidget(m_progress);
    m_cancel = new QPushButton(tr("&Cancel"));
    m_cancel->hide();
    connect(m_cancel, &QPushButton::clicked, &m_watcher, &QFutureWatcherBase::cancel);
    layout->addWidget(m_cancel);
    return panel;
}

QWidget *SoundPage::makeControls()
{
    auto *panel = new QWidget;
    panel->setFixedWidth(244);
    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(makeCategories());
    m_anyway = new QCheckBox(tr("&Play anyway"));
    m_anyway->setToolTip(tr("Plays what is muted or in no chosen category as well."));
    connect(m_anyway, &QCheckBox::toggled, this, &SoundPage::showStates);
    layout->addWidget(m_anyway);
    m_volume = new QSlider(Qt::Horizontal);
    m_volume->setRange(0, 100);
    m_volume->setAccessibleName(tr("Volume"));
    connect(m_volume, &QSlider::valueChanged, this, &SoundPage::setVolume);
    auto *form = new QFormLayout;
    form->addRow(tr("&Volume:"), m_volume);
    layout->addLayout(form);
    layout->addWidget(makeMute());
    layout->addWidget(makeAll());
    layout->addWidget(makeLog(), 1);
    return panel;
}

QWidget *SoundPage::makeCategories()
{
    auto *group = new QGroupBox(tr("Categories"));
    auto *layout = new QVBoxLayout(group);
    for (const SoundCategory &category : soundCategories()) {
        auto *box = new QCheckBox(QLatin1String(category.name));
        QPixmap color(10, 10);
        color.fill(colorOfSound(quint64(1) << m_categories.size()));
        box->setIcon(color);
        box->setChecked(true);
        connect(box, &QCheckBox::toggled, this, &SoundPage::setCategories);
        layout->addWidget(box);
        m_categories << box;
    }
    return group;
}

QWidget *SoundPage::makeMute()
{
    auto *panel = new QWidget;
    auto *layout = new QHBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    m_mute = new QCheckBox(tr("&Mute"));
    m_mute->setToolTip(tr("What plays fades out; what is muted refuses to play."));
    connect(m_mute, &QCheckBox::toggled, this, &SoundPage::setMuted);
    layout->addWidget(m_mute, 1);
    auto *label = new QLabel(tr("fade &for"));
    m_seconds = new QDoubleSpinBox;
    m_seconds->setRange(0, 10);
    m_seconds->setSingleStep(0.5);
    m_seconds->setDecimals(1);
    m_seconds->setValue(1);
    m_seconds->setSuffix(tr(" s"));
    label->setBuddy(m_seconds);
    layout->addWidget(label);
    layout->addWidget(m_seconds);
    return panel;
}

QWidget *SoundPage::makeAll()
{
    auto *panel = new QWidget;
    auto *layout = new QHBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto button = [&](const QString &text, auto operation) {
        auto *push = new QPushButton(text);
        connect(push, &QPushButton::clicked, this, operation);
        layout->addWidget(push);
    };
    button(tr("F&ade All"), &SoundPage::fadeAll);
    button(tr("&Stop All"), &SoundPage::stopAll);
    return panel;
}

QWidget *SoundPage::makeLog()
{
    m_log = new QPlainTextEdit;
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(1000);
    m_log->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_log->setAccessibleName(tr("Calls"));
    m_log->setPlaceholderText(tr("What is played, and what is called at the ends of plays and fades"));
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.8);
    m_log->setFont(small);
    return m_log;
}

void SoundPage::showEvent(QShowEvent *event)
{
    Page::showEvent(event);
    if (!m_folder.isNull())
        return;
    const QString folder = systemSoundFolder();
    if (folder.isEmpty())
        m_state->setText(tr("No sounds are installed. Open a folder with some."));
    else
        loadFolder(folder);
}

void SoundPage::chooseFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Open a Folder of Sounds"), m_folder);
    if (!folder.isEmpty())
        loadFolder(folder);
}
